#pragma once

#include "core/base/Result.h"

#include <string>
#include <vector>

namespace veilkeep {

// The program as a user installs it for himself. Main thread.
class Installation {
public:
    virtual ~Installation() = default;

    virtual bool isInstalled() const = 0; // something lies where the program would

    // Puts the running program there, in the place of what was installed before; processes of that go on.
    // After an error everything is as it was.
    [[nodiscard]] virtual Result<void> install() = 0;

    // Takes away what install() made, and the entry by which the session starts it. Answers what stays,
    // because somebody changed it or because it is not ours. ENOENT where nothing was installed.
    [[nodiscard]] virtual Result<std::vector<std::string>> uninstall() = 0;

protected:
    Installation() = default;
    Installation(const Installation&) = default;
    Installation& operator=(const Installation&) = default;
};

} // namespace veilkeep
