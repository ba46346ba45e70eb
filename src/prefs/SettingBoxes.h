#pragma once

#include "core/storage/UserDefaults.h"
#include "prefs/PrefsView.h"

namespace veilkeep {

// The check boxes that are one key of the user defaults each, and nothing else. Main thread.
class SettingBoxes {
public:
    explicit SettingBoxes(UserDefaults& defaults) : m_defaults(defaults) {} // not owned

    bool isOn(PrefsBox box) const;

    // Stored at once. After an error it is as it was, unless that is NotDurable.
    [[nodiscard]] Result<void> set(PrefsBox box, bool isOn);

private:
    UserDefaults& m_defaults;
};

} // namespace veilkeep
