#pragma once

#include "core/filesystem/MountTable.h"

#include <string>

namespace veilkeep {

// What tells one volume from all others over remounts and restarts. Device numbers do not: they go by the
// order of mounting.
struct VolumeIdentity {
    std::string uuid; // in the form that the system's links have; empty where none is to be learned
    std::string fileSystemType;
    std::string source; // only where there is no uuid

    bool isKnown() const { return !fileSystemType.empty(); }
    bool operator==(const VolumeIdentity&) const = default;
};

// The file system itself is asked first. The links' directory, for those that do not tell, holds one link to
// a device for each file system that has a UUID, named by it.
VolumeIdentity volumeIdentityOfMount(const Mount& mount, const std::string& uuidLinks = "/dev/disk/by-uuid");

} // namespace veilkeep
