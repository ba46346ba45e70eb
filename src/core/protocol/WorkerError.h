#pragma once

namespace veilkeep {

// The numbers that cloakWorker answers with. 2 to 8 are the protocol's own, 9 to 13 tell apart what would
// otherwise be an unknown error.
enum class WorkerError : int {
    Success = 0,
    Unknown = 1,
    NotFound = 2,
    NotEnoughRights = 3,
    AlreadyHidden = 4,
    NoHiddenDirectory = 5, // ".SYS_INDEX" cannot be made or is no real directory
    NameTaken = 6,
    Cancelled = 7,
    Protected = 8,
    NameCannotBeHidden = 9,
    NoSpace = 10,
    ReadOnlyFileSystem = 11,
    CannotBeMoved = 12, // a mount point, or its parts lie on other volumes
    InputOutput = 13,
};

WorkerError workerErrorFromErrno(int systemError);

} // namespace veilkeep
