#pragma once

#include "filelist/CurrentGroup.h"

namespace veilkeep {

// Which group is shown, as the item list asks for it. GroupViewController sets it; made before both. Main
// thread.
class GroupSelection : public CurrentGroup {
public:
    std::int64_t currentGroupID() const override { return m_groupID; }
    void setCurrentGroupID(std::int64_t groupID) { m_groupID = groupID; }

private:
    std::int64_t m_groupID = allFiles;
};

} // namespace veilkeep
