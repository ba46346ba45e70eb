#pragma once

#include "core/base/Result.h"

namespace veilkeep {

// Whether the user's session starts the program at login. Main thread.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    virtual bool shouldLaunchAtLogin() const = 0; // as it is on the disk now

    // Nothing is changed where it is so already.
    [[nodiscard]] virtual Result<void> setShouldLaunchAtLogin(bool launches) = 0;

protected:
    LoginItem() = default;
    LoginItem(const LoginItem&) = default;
    LoginItem& operator=(const LoginItem&) = default;
};

} // namespace veilkeep
