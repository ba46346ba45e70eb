#pragma once

#include "groups/GroupNames.h"

#include <string_view>

namespace veilkeep {

// Whether the check box for AutoHide is kept from sight, by the name of the selected group: the group of all
// files is not marked by hand.
class AutoHideVisibleValue {
public:
    static bool transformedValue(std::string_view name) { return name == groupName::allFiles; }
};

} // namespace veilkeep
