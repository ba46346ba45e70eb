#include "tests/support/LoopVolume.h"

#include "core/base/UniqueFd.h"
#include "tests/support/PrivateMount.h"

#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace veilkeep::test {
namespace {

constexpr off_t imageSize = off_t{320} << 20; // the least that all types take; sparse

std::string reason(const std::string& what) {
    return what + ": " + std::strerror(errno);
}

// Paths of scratch trees need no quoting.
std::string run(const std::string& command) {
    return std::system((command + " >/dev/null 2>&1").c_str()) == 0 ? "" : "failed: " + command;
}

std::string makeImage(const std::string& type, const std::string& path) {
    const UniqueFd image(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!image || ::ftruncate(image.get(), imageSize) != 0)
        return reason(path);
    return run("mkfs." + type + " " + path);
}

} // namespace

LoopVolume::LoopVolume(const ScratchTree& tree, const std::string& fileSystemType)
    : m_type(fileSystemType),
      m_image(tree.path("volume." + fileSystemType)),
      m_mountPoint(tree.makeDirectory("mounted-" + fileSystemType)),
      m_whyMissing(enterPrivateMounts()) {
    if (m_whyMissing.empty())
        m_whyMissing = makeImage(m_type, m_image);
    if (m_whyMissing.empty())
        m_whyMissing = mount();
}

LoopVolume::~LoopVolume() {
    if (m_whyMissing.empty())
        ::umount2(m_mountPoint.c_str(), MNT_DETACH);
}

void LoopVolume::mountAgain() {
    if (::umount2(m_mountPoint.c_str(), 0) != 0)
        throw std::runtime_error(reason("umount " + m_mountPoint));
    if (const std::string failure = mount(); !failure.empty())
        throw std::runtime_error(failure);
}

std::string LoopVolume::mount() const {
    return run("mount -o loop -t " + m_type + " " + m_image + " " + m_mountPoint);
}

} // namespace veilkeep::test
