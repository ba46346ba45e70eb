#include "core/protocol/InProgressFolder.h"

#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/filesystem/Directories.h"
#include "core/storage/PropertyList.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/random.h>
#include <unistd.h>

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

std::string hexadecimal(std::uint64_t number) {
    std::string text(16, '0');
    for (std::size_t digit = text.size(); digit-- > 0; number >>= 4)
        text[digit] = "0123456789abcdef"[number & 15];
    return text;
}

std::string fileNameOf(const InProgressRecord& record) {
    return hexadecimal(hashOf(record)) + ".plist";
}

// A name that no other writer has, alive or dead.
Result<std::string> temporaryName(const std::string& name) {
    std::uint64_t number = 0;
    if (retryOnInterrupt([&] { return ::getrandom(&number, sizeof number, 0); }) != sizeof number)
        return Error::system("getrandom", {}, errno);
    return "." + name + "." + hexadecimal(number);
}

Result<void> writeAll(int fd, std::string_view content, const std::string& path) {
    while (!content.empty()) {
        const ssize_t count = retryOnInterrupt([&] { return ::write(fd, content.data(), content.size()); });
        if (count < 0)
            return Error::system("write", path, errno);
        content.remove_prefix(static_cast<std::size_t>(count));
    }
    return {};
}

Result<void> writeNewFile(int directory, const std::string& name, std::string_view content) {
    UniqueFd file(retryOnInterrupt([&] {
        return ::openat(directory, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    }));
    if (!file)
        return Error::system("openat", name, errno);
    Result<void> written = writeAll(file.get(), content, name);
    if (::close(file.release()) != 0 && errno != EINTR && written)
        written = Error::system("close", name, errno);
    return written;
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

Result<void> put(int directory, const std::string& name, std::string_view content) {
    const Result<std::string> temporary = temporaryName(name);
    if (!temporary)
        return temporary.error();
    Result<void> done = writeNewFile(directory, *temporary, content);
    if (done && ::renameat(directory, temporary->c_str(), directory, name.c_str()) != 0)
        done = Error::system("renameat", name, errno);
    if (!done)
        ::unlinkat(directory, temporary->c_str(), 0); // the first error is the one to tell
    return done;
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
    return put(directory->get(), fileNameOf(record), *content);
}

} // namespace veilkeep
