#pragma once

#include "core/filesystem/MountTable.h"

#include <sched.h>
#include <sys/mount.h>

#include <cerrno>
#include <cstring>
#include <string>

namespace veilkeep::test {

// Gives this process mounts of its own, which vanish with it and are seen by nobody else. Answers why it
// cannot be done, and nothing when it is done.
inline std::string enterPrivateMounts() {
    if (::unshare(CLONE_NEWNS) != 0)
        return std::string("unshare: ") + std::strerror(errno);
    if (::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        return std::string("mount --make-rprivate /: ") + std::strerror(errno);
    return {};
}

// Something mounted as long as this lives, seen by this process alone. Where the machine does not allow it,
// whyMissing() tells the reason to skip the test with.
class PrivateMount {
public:
    PrivateMount(const std::string& source, const std::string& target, const char* type,
                 unsigned long flags = 0, const char* options = nullptr)
        : m_target(target), m_whyMissing(enterPrivateMounts()) {
        if (m_whyMissing.empty() && ::mount(source.c_str(), target.c_str(), type, flags, options) != 0)
            m_whyMissing = "mount " + target + ": " + std::strerror(errno);
        MountTable::reread();
    }
    ~PrivateMount() {
        if (m_whyMissing.empty())
            ::umount2(m_target.c_str(), MNT_DETACH);
        MountTable::reread();
    }
    PrivateMount(const PrivateMount&) = delete;
    PrivateMount& operator=(const PrivateMount&) = delete;

    const std::string& whyMissing() const { return m_whyMissing; }

private:
    std::string m_target;
    std::string m_whyMissing;
};

} // namespace veilkeep::test
