#include "core/protocol/WorkerError.h"

#include <cerrno>

namespace veilkeep {

WorkerError workerErrorFromErrno(int systemError) {
    switch (systemError) {
    case 0:
        return WorkerError::Success;
    case ENOENT:
    case ENOTDIR: // something on the way to the item is no directory, so there is no such item
    case ELOOP:   // the same: a link in a ring, or for root any link
        return WorkerError::NotFound;
    case EACCES:
    case EPERM:
        return WorkerError::NotEnoughRights;
    case EEXIST:
    case ENOTEMPTY:
        return WorkerError::NameTaken;
    case ENAMETOOLONG:
    case EILSEQ:
        return WorkerError::NameCannotBeHidden;
    case ENOSPC:
    case EDQUOT:
        return WorkerError::NoSpace;
    case EROFS:
        return WorkerError::ReadOnlyFileSystem;
    case EXDEV:
    case EBUSY:
        return WorkerError::CannotBeMoved;
    case EIO:
        return WorkerError::InputOutput;
    default:
        return WorkerError::Unknown;
    }
}

} // namespace veilkeep
