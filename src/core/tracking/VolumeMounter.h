#pragma once

#include "core/base/Result.h"

#include <string>

namespace veilkeep {

// Whether somebody may be asked for a password on the way.
enum class Asking { Never, Allowed };

// Mounts volumes that are attached but not mounted; the desktop's side of it comes in from above.
class VolumeMounter {
public:
    virtual ~VolumeMounter() = default;

    // The volume whose file system has this UUID. Done as well where it is mounted already; after an error
    // everything is as before. Blocks as long as mounting, and asking, takes.
    virtual Result<void> mount(const std::string& uuid, Asking asking) = 0;

protected:
    VolumeMounter() = default;
    VolumeMounter(const VolumeMounter&) = default;
    VolumeMounter& operator=(const VolumeMounter&) = default;
};

} // namespace veilkeep
