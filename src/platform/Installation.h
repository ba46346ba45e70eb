#pragma once

#include "core/base/Result.h"

#include <string>
#include <vector>

namespace veilkeep {

// What stays after an installation was taken away.
struct Uninstalled {
    std::vector<std::string> kept; // somebody changed it, or it is not ours
    std::vector<Error> notRemoved; // and should have been
};

// The program as a user installs it for himself. Main thread.
class Installation {
public:
    virtual ~Installation() = default;

    virtual bool isInstalled() const = 0; // something lies where the program would

    // Puts the running program there, in the place of what was installed before; processes of that go on.
    // After an error everything is as it was.
    [[nodiscard]] virtual Result<void> install() = 0;

    // Takes away what install() made, and the entry by which the session starts it. ENOENT where nothing was
    // installed. Can be done again where something was not removed.
    [[nodiscard]] virtual Result<Uninstalled> uninstall() = 0;

protected:
    Installation() = default;
    Installation(const Installation&) = default;
    Installation& operator=(const Installation&) = default;
};

} // namespace veilkeep
