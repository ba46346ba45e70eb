#include "core/filesystem/ContentCopy.h"

#include "core/base/SystemCall.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <memory>

namespace veilkeep {
namespace {

constexpr std::size_t pieceSize = std::size_t{1} << 20;

struct Part {
    off_t begin = 0, end = 0; // empty: there is none
};

off_t sizeOf(int file) {
    return ::lseek(file, 0, SEEK_END);
}

// The next part that is no hole. Where the file system does not tell, all of the file is one.
Result<Part> partFrom(int file, off_t offset) {
    const off_t begin = ::lseek(file, offset, SEEK_DATA);
    if (begin < 0 && errno == ENXIO)
        return Part{};
    const off_t end = begin < 0 ? -1 : ::lseek(file, begin, SEEK_HOLE);
    if (begin >= 0 && end >= 0)
        return Part{begin, end};
    const int error = errno;
    const off_t size = sizeOf(file);
    if (size < 0 || (error != EINVAL && error != EOPNOTSUPP))
        return Error::system("read", {}, error);
    return Part{offset, size};
}

Result<void> writeAt(int file, const char* bytes, std::size_t count, off_t offset) {
    while (count > 0) {
        const ssize_t written = retryOnInterrupt([&] { return ::pwrite(file, bytes, count, offset); });
        if (written < 0)
            return Error::system("write", {}, errno);
        bytes += written;
        offset += written;
        count -= static_cast<std::size_t>(written);
    }
    return {};
}

// The file may get shorter meanwhile. One that ends too early all the same cannot be read.
Result<void> copyPart(int from, int to, Part part, const std::function<bool()>& goesOn) {
    const auto buffer = std::make_unique_for_overwrite<char[]>(pieceSize);
    while (part.begin < part.end) {
        if (!goesOn())
            return Error::system("read", {}, ECANCELED);
        const std::size_t wanted = std::min(pieceSize, static_cast<std::size_t>(part.end - part.begin));
        const ssize_t count =
            retryOnInterrupt([&] { return ::pread(from, buffer.get(), wanted, part.begin); });
        if (count < 0)
            return Error::system("read", {}, errno);
        if (count == 0 && sizeOf(from) > part.begin)
            return Error::system("read", {}, EIO);
        if (count == 0)
            break;
        if (auto written = writeAt(to, buffer.get(), static_cast<std::size_t>(count), part.begin); !written)
            return written;
        part.begin += count;
    }
    return {};
}

} // namespace

Result<void> copyContent(int from, int to, const std::function<bool()>& goesOn) {
    const off_t size = sizeOf(from);
    if (size < 0)
        return Error::system("read", {}, errno);
    for (off_t offset = 0; offset < size;) {
        const auto part = partFrom(from, offset);
        if (!part)
            return part.error();
        if (part->end <= offset)
            break;
        if (auto copied = copyPart(from, to, *part, goesOn); !copied)
            return copied;
        offset = part->end;
    }
    const off_t sizeNow = sizeOf(from); // not longer than what it holds by now
    if (sizeNow < 0)
        return Error::system("read", {}, errno);
    if (::ftruncate(to, std::min(size, sizeNow)) != 0) // a hole at its end
        return Error::system("write", {}, errno);
    return {};
}

} // namespace veilkeep
