#include "core/storage/TemporaryFile.h"

#include "core/base/Hexadecimal.h"
#include "core/base/PathText.h"
#include "core/base/SystemCall.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/random.h>
#include <unistd.h>

#include <cstdint>

namespace veilkeep {
namespace {

constexpr std::string_view prefix = ".veilkeep-";

} // namespace

bool TemporaryFile::isName(std::string_view name) {
    return name.starts_with(prefix) && name.size() == prefix.size() + hexadecimal(0).size() &&
           name.find_first_not_of(hexadecimalDigits, prefix.size()) == std::string_view::npos;
}

TemporaryFile::~TemporaryFile() {
    if (!m_name.empty())
        ::unlinkat(m_directory, m_name.c_str(), 0); // the error that led here is the one to tell
}

Result<void> TemporaryFile::create() {
    std::uint64_t number = 0;
    if (retryOnInterrupt([&] { return ::getrandom(&number, sizeof number, 0); }) != sizeof number)
        return Error::system("getrandom", {}, errno);
    const std::string name = std::string(prefix) + hexadecimal(number);
    m_file.reset(retryOnInterrupt([&] {
        return ::openat(m_directory, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                        0600);
    }));
    if (!m_file)
        return failed("open");
    m_name = name;
    return {};
}

Result<void> TemporaryFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count =
            retryOnInterrupt([&] { return ::write(m_file.get(), bytes.data(), bytes.size()); });
        if (count < 0)
            return failed("write");
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return {};
}

Result<void> TemporaryFile::sync() {
    if (retryOnInterrupt([&] { return ::fsync(m_file.get()); }) != 0)
        return failed("fsync");
    return {};
}

Result<void> TemporaryFile::giveAccessOf(const struct stat& replaced) {
    const bool hasGroup = ::fchown(m_file.get(), static_cast<uid_t>(-1), replaced.st_gid) == 0;
    if (::fchmod(m_file.get(), replaced.st_mode & (hasGroup ? 0777U : 0700U)) != 0)
        return failed("fchmod");
    return {};
}

Result<void> TemporaryFile::putInPlace() {
    if (::close(m_file.release()) != 0 && errno != EINTR) // EINTR: closed all the same
        return failed("close");
    const std::string name(lastPathComponent(m_target));
    if (::renameat(m_directory, m_name.c_str(), m_directory, name.c_str()) != 0)
        return failed("rename");
    m_name.clear();
    return {};
}

Error TemporaryFile::failed(const char* operation) const {
    return Error::system(operation, m_target, errno);
}

} // namespace veilkeep
