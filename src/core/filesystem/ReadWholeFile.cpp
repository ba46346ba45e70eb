#include "core/filesystem/ReadWholeFile.h"

#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace veilkeep {
namespace {

// Reads to the end of the file, but stops one byte past the limit. The size that the system tells is only a
// hint for the first buffer: it is 0 for files that are made while they are read.
Result<std::string> readUpTo(int file, const std::string& path, std::size_t limit, std::size_t sizeHint) {
    std::string bytes;
    std::size_t length = 0;
    for (;;) {
        if (length == bytes.size())
            bytes.resize(std::min(limit, length == 0 ? sizeHint : length * 2) + 1);
        const ssize_t count =
            retryOnInterrupt([&] { return ::read(file, bytes.data() + length, bytes.size() - length); });
        if (count < 0)
            return Error::system("read", path, errno);
        length += static_cast<std::size_t>(count);
        if (length > limit)
            return Error{ErrorCode::TooLarge, "read", path, 0};
        if (count == 0)
            break;
    }
    bytes.resize(length);
    return bytes;
}

} // namespace

Result<std::string> readWholeFile(const std::string& path, std::size_t maximumSize, FileStamp* stamp) {
    const UniqueFd file(
        retryOnInterrupt([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK); }));
    if (!file)
        return Error::system("open", path, errno);
    struct stat status = {};
    if (::fstat(file.get(), &status) != 0)
        return Error::system("fstat", path, errno);
    if (!S_ISREG(status.st_mode))
        return Error{ErrorCode::NotAFile, "read", path, S_ISDIR(status.st_mode) ? EISDIR : 0};
    if (stamp)
        *stamp = FileStamp::of(status);
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size > maximumSize)
        return Error{ErrorCode::TooLarge, "read", path, 0};
    return readUpTo(file.get(), path, maximumSize, std::max<std::size_t>(size, 4096));
}

} // namespace veilkeep
