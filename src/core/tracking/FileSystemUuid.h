#pragma once

#include "core/filesystem/MountTable.h"

#include <string>

namespace veilkeep {

// The UUID that the file system mounted there tells of itself, in the form that the links in
// /dev/disk/by-uuid have. Needs no rights beyond reading the mount point. Empty where the file system has
// none, where the kernel cannot be asked, and for kinds that may block (network and FUSE) or make one up for
// each mount.
std::string uuidFromFileSystem(const Mount& mount);

} // namespace veilkeep
