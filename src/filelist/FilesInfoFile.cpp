#include "filelist/FilesInfoFile.h"

#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/log/Log.h"
#include "core/storage/RecordArchive.h"

#include <cerrno>
#include <utility>

namespace veilkeep {
namespace {

constexpr std::string_view filesKey = "files";

bool isMissing(const Error& error) {
    return error.code == ErrorCode::System && error.systemError == ENOENT;
}

} // namespace

FilesInfoFile::FilesInfoFile(std::string path, SafeFileOptions options)
    : m_file(std::move(path), options), m_maximumSize(options.maximumSize) {}

FilesInfoFile::Loaded FilesInfoFile::load() {
    Loaded loaded;
    Result<std::vector<File>> files = read();
    if (files) {
        loaded.files = std::move(*files);
        if (m_isOfNewerVersion)
            loaded.trouble = Error{ErrorCode::NewerVersion, "read", path(), 0};
        return loaded;
    }
    const std::vector<std::string> copies = m_file.earlierCopies();
    const bool isLinkToNothing = isMissing(files.error()) && itemExistsAt(path());
    if (isMissing(files.error()) && copies.empty() && !isLinkToNothing)
        return loaded;
    loaded.trouble = files.error();
    const bool mustStay = m_isOfNewerVersion;
    for (const std::string& copy : copies) {
        Result<std::string> bytes = readWholeFile(copy, m_maximumSize);
        Result<std::vector<File>> earlier = bytes ? take(std::move(*bytes), copy) : bytes.error();
        if (earlier) {
            loaded.files = std::move(*earlier);
            loaded.earlierCopy = copy;
            break;
        }
        logError("An earlier copy of the list could not be read", earlier.error());
    }
    m_isOfNewerVersion = mustStay || (loaded.files && m_isOfNewerVersion);
    return loaded;
}

Result<std::vector<File>> FilesInfoFile::read() {
    m_isOfNewerVersion = false;
    m_unknown.clear();
    Result<std::string> bytes = m_file.read();
    if (!bytes)
        return bytes.error();
    Result<std::vector<File>> files = take(std::move(*bytes), path());
    if (!files)
        m_file.contentIsDamaged();
    return files;
}

Result<std::vector<File>> FilesInfoFile::take(std::string bytes, const std::string& path) {
    Result<RecordArchive> archive = decodeArchive(std::move(bytes), filesKey);
    m_isOfNewerVersion = archive ? archive->version > RecordArchive::currentVersion
                                 : archive.error().code == ErrorCode::NewerVersion;
    if (!archive) {
        Error error = archive.error();
        error.path = path;
        return error;
    }
    m_unknown = std::move(archive->unknown);
    std::vector<File> files;
    files.reserve(archive->records.size());
    for (PropertyDictionary& record : archive->records)
        files.emplace_back(std::move(record));
    return files;
}

Result<SafeFile::Saved> FilesInfoFile::save(std::span<const ListedFile> files) {
    if (m_isOfNewerVersion)
        return Error{ErrorCode::NewerVersion, "save", path(), 0};
    std::vector<const PropertyDictionary*> records;
    records.reserve(files.size());
    for (const ListedFile& file : files)
        records.push_back(&file->properties());
    const Result<std::string> bytes = encodeArchive(filesKey, records, m_unknown);
    if (!bytes)
        return bytes.error();
    return m_file.save(*bytes);
}

} // namespace veilkeep
