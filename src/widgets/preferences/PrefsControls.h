#pragma once

#include "prefs/PrefsView.h"

#include <map>

class QCheckBox;
class QLabel;
class QLineEdit;

namespace veilkeep {

// What pages have put in place for the logic to work with.
struct PrefsControls {
    std::map<PrefsBox, QCheckBox*> boxes;
    std::map<PrefsField, QLineEdit*> fields;
    std::map<PrefsText, QLabel*> texts;
};

} // namespace veilkeep
