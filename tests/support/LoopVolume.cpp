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

std::string reason(const std::string& what) {
    return what + ": " + std::strerror(errno);
}

// Paths of scratch trees need no quoting.
std::string run(const std::string& command) {
    return std::system((command + " >/dev/null 2>&1").c_str()) == 0 ? "" : "failed: " + command;
}

std::string makeImage(const std::string& type, const std::string& path, const LoopVolumeOptions& options) {
    const UniqueFd image(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!image || ::ftruncate(image.get(), off_t{options.megabytes} << 20) != 0)
        return reason(path);
    return run("mkfs." + type + " " + options.formatOptions + " " + path);
}

std::string mountReason(const std::string& type, const std::string& image, const std::string& mountPoint,
                        const std::string& options) {
    const std::string lateCommits = type == "ext4" ? ",commit=600" : "";
    const std::string further = options.empty() ? "" : "," + options;
    return run("mount -o loop" + lateCommits + further + " -t " + type + " " + image + " " + mountPoint);
}

void throwUnlessEmpty(const std::string& failure) {
    if (!failure.empty())
        throw std::runtime_error(failure);
}

} // namespace

LoopVolume::LoopVolume(const ScratchTree& tree, const std::string& fileSystemType,
                       const LoopVolumeOptions& options)
    : m_type(fileSystemType),
      m_image(tree.path("volume." + (options.name.empty() ? m_type : options.name))),
      m_mountPoint(tree.makeDirectory("mounted-" + (options.name.empty() ? m_type : options.name))),
      m_whyMissing(enterPrivateMounts()) {
    if (m_whyMissing.empty())
        m_whyMissing = makeImage(m_type, m_image, options);
    if (m_whyMissing.empty())
        m_whyMissing = mountReason(m_type, m_image, m_mountPoint, {});
    m_isMounted = m_whyMissing.empty();
}

LoopVolume::~LoopVolume() {
    if (m_isMounted)
        ::umount2(m_mountPoint.c_str(), MNT_DETACH);
}

void LoopVolume::unmount() {
    if (::umount2(m_mountPoint.c_str(), 0) != 0)
        throw std::runtime_error(reason("umount " + m_mountPoint));
    m_isMounted = false;
}

void LoopVolume::mountAt(const std::string& mountPoint, const std::string& options) {
    mountImage(m_type, m_image, mountPoint, options);
    m_mountPoint = mountPoint;
    m_isMounted = true;
}

void LoopVolume::sync() const {
    const UniqueFd root(::open(m_mountPoint.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!root || ::syncfs(root.get()) != 0)
        throw std::runtime_error(reason("syncfs " + m_mountPoint));
}

void LoopVolume::copyImage(const std::string& path) const {
    throwUnlessEmpty(run("cp --sparse=always " + m_image + " " + path));
}

void LoopVolume::mountImage(const std::string& type, const std::string& image, const std::string& mountPoint,
                            const std::string& options) {
    throwUnlessEmpty(mountReason(type, image, mountPoint, options));
}

} // namespace veilkeep::test
