#include "core/filesystem/TreeCopy.h"

#include "core/base/CHandles.h"
#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/filesystem/Directories.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <vector>

namespace veilkeep {
namespace {

constexpr int deepest = 64; // a link to a directory above leads there without end

Result<void> writeAll(int file, const std::string& path, const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t written = retryOnInterrupt([&] { return ::write(file, bytes, count); });
        if (written < 0)
            return Error::system("write", path, errno);
        bytes += written;
        count -= static_cast<std::size_t>(written);
    }
    return {};
}

Result<void> copyContent(int source, const std::string& from, int target, const std::string& to) {
    std::vector<char> buffer(std::size_t{1} << 18);
    for (;;) {
        const ssize_t count = retryOnInterrupt([&] { return ::read(source, buffer.data(), buffer.size()); });
        if (count < 0)
            return Error::system("read", from, errno);
        if (count == 0)
            break;
        if (auto written = writeAll(target, to, buffer.data(), static_cast<std::size_t>(count)); !written)
            return written;
    }
    if (::fsync(target) != 0)
        return Error::system("fsync", to, errno);
    return {};
}

Result<void> copyFile(const std::string& from, const std::string& to, mode_t mode) {
    const UniqueFd source(::open(from.c_str(), O_RDONLY | O_CLOEXEC));
    if (!source)
        return Error::system("open", from, errno);
    const UniqueFd target(::open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!target || ::fchmod(target.get(), (mode & 0755) | S_IRUSR | S_IWUSR) != 0)
        return Error::system("open", to, errno);
    return copyContent(source.get(), from, target.get(), to);
}

Result<void> copyItem(const std::string& from, const std::string& to, int depth);

Result<void> copyEntries(const std::string& from, const std::string& to, int depth) {
    const DirectoryStream stream(::opendir(from.c_str()));
    if (!stream)
        return Error::system("opendir", from, errno);
    for (errno = 0; const dirent* const entry = ::readdir(stream.get()); errno = 0) {
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        if (auto copied = copyItem(joinPath(from, name), joinPath(to, name), depth + 1); !copied)
            return copied;
    }
    if (errno != 0)
        return Error::system("readdir", from, errno);
    return syncDirectory(to);
}

Result<void> copyItem(const std::string& from, const std::string& to, int depth) {
    struct stat status = {};
    if (depth > deepest)
        return Error::system("copy", from, ELOOP);
    if (::stat(from.c_str(), &status) != 0)
        return Error::system("stat", from, errno);
    if (S_ISREG(status.st_mode))
        return copyFile(from, to, status.st_mode);
    if (!S_ISDIR(status.st_mode))
        return Error{ErrorCode::NotAFile, "copy", from, 0};
    if (::mkdir(to.c_str(), (status.st_mode & 0755) | S_IRWXU) != 0)
        return Error::system("mkdir", to, errno);
    return copyEntries(from, to, depth);
}

} // namespace

Result<void> copyTree(const std::string& from, const std::string& to) {
    return copyItem(from, to, 0);
}

Result<void> removeTree(const std::string& path) {
    std::error_code failure;
    std::filesystem::remove_all(path, failure);
    if (failure)
        return Error::system("remove", path, failure.value());
    return {};
}

} // namespace veilkeep
