#include "worker/FileAccessAs.h"

#include <linux/securebits.h>
#include <sys/fsuid.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <cerrno>

namespace veilkeep {
namespace {

// Else root's capabilities for files would go with the name. Answers the bits as they were, or -1.
int keepCapabilities() {
    const int bits = ::prctl(PR_GET_SECUREBITS);
    if (bits < 0 || ::prctl(PR_SET_SECUREBITS, bits | SECBIT_NO_SETUID_FIXUP) != 0)
        return -1;
    return bits;
}

} // namespace

FileAccessAs::FileAccessAs(uid_t user, gid_t group, Rights rights) : m_isRoot(::geteuid() == 0) {
    if (!m_isRoot)
        return;
    if (rights == Rights::StillRoots)
        m_securityBits = keepCapabilities();
    ::setfsgid(group);
    ::setfsuid(user);
}

FileAccessAs::~FileAccessAs() {
    if (!m_isRoot)
        return;
    const int callersErrno = errno;
    ::setfsuid(::geteuid());
    ::setfsgid(::getegid());
    if (m_securityBits >= 0)
        ::prctl(PR_SET_SECUREBITS, m_securityBits);
    errno = callersErrno;
}

} // namespace veilkeep
