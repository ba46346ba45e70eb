#include "core/storage/RecordsFile.h"

#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/log/Log.h"
#include "core/storage/RecordArchive.h"

#include <cerrno>
#include <utility>

namespace veilkeep {
namespace {

bool isMissing(const Error& error) {
    return error.code == ErrorCode::System && error.systemError == ENOENT;
}

} // namespace

RecordsFile::RecordsFile(std::string path, std::string_view recordsKey, SafeFileOptions options)
    : m_file(std::move(path), options), m_recordsKey(recordsKey), m_maximumSize(options.maximumSize) {}

RecordsFile::Loaded RecordsFile::load() {
    Loaded loaded;
    Result<Records> records = read();
    if (records) {
        loaded.records = std::move(*records);
        if (m_isOfNewerVersion)
            loaded.trouble = Error{ErrorCode::NewerVersion, "read", path(), 0};
        return loaded;
    }
    const std::vector<std::string> copies = m_file.earlierCopies();
    const bool isLinkToNothing = isMissing(records.error()) && itemExistsAt(path());
    if (isMissing(records.error()) && copies.empty() && !isLinkToNothing)
        return loaded;
    loaded.trouble = records.error();
    const bool mustStay = m_isOfNewerVersion;
    for (const std::string& copy : copies) {
        Result<std::string> bytes = readWholeFile(copy, m_maximumSize);
        Result<Records> earlier = bytes ? take(std::move(*bytes), copy) : bytes.error();
        if (earlier) {
            loaded.records = std::move(*earlier);
            loaded.earlierCopy = copy;
            break;
        }
        logError("An earlier copy of the list could not be read", earlier.error());
    }
    m_isOfNewerVersion = mustStay || (loaded.records && m_isOfNewerVersion);
    return loaded;
}

Result<RecordsFile::Records> RecordsFile::read() {
    m_isOfNewerVersion = false;
    m_unknown.clear();
    Result<std::string> bytes = m_file.read();
    if (!bytes)
        return bytes.error();
    Result<Records> records = take(std::move(*bytes), path());
    if (!records)
        m_file.contentIsDamaged();
    return records;
}

Result<RecordsFile::Records> RecordsFile::take(std::string bytes, const std::string& path) {
    Result<RecordArchive> archive = decodeArchive(std::move(bytes), m_recordsKey);
    m_isOfNewerVersion = archive ? archive->version > RecordArchive::currentVersion
                                 : archive.error().code == ErrorCode::NewerVersion;
    if (!archive) {
        Error error = archive.error();
        error.path = path;
        return error;
    }
    m_unknown = std::move(archive->unknown);
    return std::move(archive->records);
}

Result<SafeFile::Saved> RecordsFile::save(std::span<const PropertyDictionary* const> records) {
    if (m_isOfNewerVersion)
        return Error{ErrorCode::NewerVersion, "save", path(), 0};
    const Result<std::string> bytes = encodeArchive(m_recordsKey, records, m_unknown);
    if (!bytes)
        return bytes.error();
    return m_file.save(*bytes);
}

} // namespace veilkeep
