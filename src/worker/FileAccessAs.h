#pragma once

#include <sys/types.h>

namespace veilkeep {

// While it lives, this thread of root's uses files under another user's name: what it makes is that user's
// from its first moment. (An owner given afterwards might be given to something else that was put in its
// place.) For anybody but root, and where the system refuses, nothing changes.
class FileAccessAs {
public:
    enum class Rights { OfThatUser, StillRoots };

    FileAccessAs(uid_t user, gid_t group, Rights rights);
    ~FileAccessAs();
    FileAccessAs(const FileAccessAs&) = delete;
    FileAccessAs& operator=(const FileAccessAs&) = delete;

private:
    bool m_isRoot;
    int m_securityBits = -1; // to be set again; -1 where they are unchanged
};

} // namespace veilkeep
