#include "core/protocol/InProgressFolder.h"

#include "core/base/Hexadecimal.h"
#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/filesystem/Directories.h"
#include "core/storage/PropertyList.h"
#include "core/storage/TemporaryFile.h"

#include <fcntl.h>

#include <cerrno>
#include <cstdint>
#include <string_view>

namespace veilkeep {
namespace {

// 64-bit FNV-1a over both paths; the NUL between them occurs in neither.
std::uint64_t hashOf(const InProgressRecord& record) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const std::string_view bytes : {std::string_view(record.originalPath), std::string_view("\0", 1),
                                         std::string_view(record.currentPath)})
        for (const char byte : bytes)
            hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
    return hash;
}

std::string fileNameOf(const InProgressRecord& record) {
    return hexadecimal(hashOf(record)) + ".plist";
}

Result<UniqueFd> openFolder(const std::string& folder) {
    if (auto made = makeDirectories(folder, 0700); !made)
        return std::move(made).error();
    UniqueFd directory(
        retryOnInterrupt([&] { return ::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC); }));
    if (!directory)
        return Error::system("open", folder, errno);
    return directory;
}

Result<void> put(int directory, const std::string& path, std::string_view content) {
    TemporaryFile file(directory, path);
    if (auto created = file.create(); !created)
        return created;
    if (auto written = file.write(content); !written)
        return written;
    return file.putInPlace();
}

} // namespace

Result<void> writeRecord(const std::string& folder, const InProgressRecord& record) {
    const Result<PropertyDictionary> dictionary = dictionaryFromRecord(record);
    if (!dictionary)
        return dictionary.error();
    const Result<std::string> content = writePropertyList(*dictionary);
    if (!content)
        return content.error();
    const Result<UniqueFd> directory = openFolder(folder);
    if (!directory)
        return directory.error();
    return put(directory->get(), joinPath(folder, fileNameOf(record)), *content);
}

} // namespace veilkeep
