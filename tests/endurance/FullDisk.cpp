#include "tests/endurance/FullDisk.h"

#include "core/base/PathText.h"
#include "core/base/UniqueFd.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace veilkeep::test {

FullDisk::FullDisk(const std::string& directory) : m_filler(joinPath(directory, "filler")) {
    const UniqueFd file(::open(m_filler.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!file)
        throw std::runtime_error(m_filler + ": " + std::strerror(errno));
    off_t size = 0;
    for (off_t part = off_t{64} << 20; part >= 512; part /= 2)
        while (::posix_fallocate(file.get(), size, part) == 0)
            size += part;
}

FullDisk::~FullDisk() {
    ::unlink(m_filler.c_str());
}

} // namespace veilkeep::test
