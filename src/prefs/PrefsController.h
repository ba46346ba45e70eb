#pragma once

#include "core/storage/UserDefaults.h"

namespace veilkeep {

// The settings that users change. Owned by the application; main thread.
class PrefsController {
public:
    explicit PrefsController(UserDefaults& defaults) : m_defaults(defaults) {} // not owned

    // True once for each user, who gets an example of an AutoHide group then.
    bool needToCreateAutoHideExample();

    bool showsMenuIcon(); // stored as true where it has no value

private:
    UserDefaults& m_defaults;
};

} // namespace veilkeep
