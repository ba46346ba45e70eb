#include "core/storage/ReplaceFile.h"

#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ResolvedPath.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>

namespace veilkeep {
namespace {

Result<std::string> unpredictableName() {
    std::uint64_t number = 0;
    if (retryOnInterrupt([&] { return ::getrandom(&number, sizeof number, 0); }) != sizeof number)
        return Error::system("getrandom", {}, errno);
    std::string name = ".veilkeep-";
    for (int shift = 60; shift >= 0; shift -= 4)
        name += "0123456789abcdef"[(number >> shift) & 15];
    return name;
}

// A file that is removed again unless it has taken the target's place.
class TemporaryFile {
public:
    // The target's path is what errors name.
    TemporaryFile(int directory, const std::string& target) : m_directory(directory), m_target(target) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (!m_name.empty())
            ::unlinkat(m_directory, m_name.c_str(), 0); // the error that led here is the one to tell
    }

    Result<void> create() {
        auto name = unpredictableName();
        if (!name)
            return std::move(name).error();
        m_file.reset(retryOnInterrupt([&] {
            return ::openat(m_directory, name->c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                            0600);
        }));
        if (!m_file)
            return failed("open");
        m_name = *std::move(name);
        return {};
    }

    Result<void> write(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t count =
                retryOnInterrupt([&] { return ::write(m_file.get(), bytes.data(), bytes.size()); });
            if (count < 0)
                return failed("write");
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return {};
    }

    Result<void> syncAndClose() {
        if (retryOnInterrupt([&] { return ::fsync(m_file.get()); }) != 0)
            return failed("fsync");
        if (::close(m_file.release()) != 0 && errno != EINTR) // EINTR: closed all the same
            return failed("close");
        return {};
    }

    Result<void> renameTo(const std::string& name) {
        if (::renameat(m_directory, m_name.c_str(), m_directory, name.c_str()) != 0)
            return failed("rename");
        m_name.clear();
        return {};
    }

private:
    Error failed(const char* operation) const { return Error::system(operation, m_target, errno); }

    int m_directory;
    const std::string& m_target;
    std::string m_name; // empty while there is no file to remove
    UniqueFd m_file;
};

Result<void> putInPlace(int directory, const std::string& target, std::string_view bytes) {
    TemporaryFile file(directory, target);
    if (auto result = file.create(); !result)
        return result;
    if (auto result = file.write(bytes); !result)
        return result;
    if (auto result = file.syncAndClose(); !result)
        return result;
    return file.renameTo(std::string(lastPathComponent(target)));
}

} // namespace

Result<std::string> replaceTarget(const std::string& path) {
    constexpr int maximumLinks = 40; // as the kernel's own limit
    std::string target = path;
    for (int links = 0; links <= maximumLinks; ++links) {
        struct stat status = {};
        if (::lstat(target.c_str(), &status) != 0) {
            if (errno == ENOENT && !target.empty())
                return target;
            return Error::system("lstat", target, errno);
        }
        if (S_ISREG(status.st_mode))
            return target;
        if (!S_ISLNK(status.st_mode))
            return Error{ErrorCode::InvalidArgument, "replace", target, S_ISDIR(status.st_mode) ? EISDIR : 0};
        const auto link = readLink(target);
        if (!link)
            return Error::system("readlink", target, errno);
        target = link->starts_with('/') ? *link : joinPath(directoryOf(target), *link);
    }
    return Error::system("readlink", path, ELOOP);
}

Result<void> replaceFile(const std::string& path, std::string_view bytes) {
    const auto target = replaceTarget(path);
    if (!target)
        return target.error();
    const std::string directoryPath = directoryOf(*target);
    const UniqueFd directory(
        retryOnInterrupt([&] { return ::open(directoryPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (!directory)
        return Error::system("open", directoryPath, errno);
    if (auto placed = putInPlace(directory.get(), *target, bytes); !placed)
        return placed;
    if (const auto synced = syncDirectory(directory.get(), directoryPath); !synced) {
        Error error = synced.error();
        error.code = ErrorCode::NotDurable;
        return error;
    }
    return {};
}

} // namespace veilkeep
