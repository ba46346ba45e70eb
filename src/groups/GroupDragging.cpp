#include "groups/GroupViewController.h"

#include <algorithm>

namespace veilkeep {
namespace {

constexpr std::ptrdiff_t firstDropRow = 3; // nothing goes in front of the first group of the user's

} // namespace

bool GroupViewController::writeRows(const std::vector<std::size_t>& indexes) const {
    const auto first = std::ranges::min_element(indexes);
    return first != indexes.end() && *first >= firstMovableRow && *first < m_groups.size();
}

DropAnswer GroupViewController::validateDrop(const GroupDrag& drag, std::ptrdiff_t row) const {
    using Operation = DropAnswer::Operation;
    if (drag.groupRows) {
        if (row < firstDropRow || row > std::ssize(m_groups))
            return {};
        return {Operation::Move, static_cast<std::size_t>(row), false};
    }
    if ((!drag.filePaths && !drag.fileNames) || !shouldSelectRow(row))
        return {};
    return {drag.filePaths ? Operation::Move : Operation::Copy, static_cast<std::size_t>(row), true};
}

void GroupViewController::moveGroup(const ListedGroup& group, std::size_t toRow) {
    const auto row = rowOf(group);
    if (!row || row == toRow || std::min(*row, toRow) < firstMovableRow || toRow >= m_groups.size())
        return;
    const ListedGroup moved = group;
    m_groups.erase(m_groups.begin() + static_cast<std::ptrdiff_t>(*row));
    m_groups.insert(m_groups.begin() + static_cast<std::ptrdiff_t>(toRow), moved);
    rowsChanged();
}

// A group comes to lie at row - 1 whichever way it goes: just above the target when it goes down, one
// higher than the gap when it goes up.
bool GroupViewController::acceptDrop(const GroupDrag& drag, std::ptrdiff_t row) {
    if (drag.filePaths) {
        m_parts.turns.run([this, paths = *drag.filePaths, groupID = m_parts.selection.currentGroupID()] {
            m_parts.files.moveFiles(paths, groupID);
        });
        return true;
    }
    if (drag.groupRows) {
        if (!writeRows(*drag.groupRows) || validateDrop(drag, row) == DropAnswer())
            return false;
        const ListedGroup moved = m_groups[std::ranges::min(*drag.groupRows)];
        moveGroup(moved, static_cast<std::size_t>(row - 1));
        setCurrent(moved);
        return true;
    }
    if (drag.fileNames)
        m_parts.files.addFiles(*drag.fileNames);
    return drag.fileNames.has_value();
}

// What a drop on the group does, for those who do not drag.
void GroupViewController::moveSelectedFiles(const ListedGroup& toGroup) {
    m_parts.turns.run([this, toGroup, files = m_parts.files.getAllSelectedFiles()] {
        if (isListed(toGroup))
            m_parts.files.moveFiles(files, toGroup->groupID().value_or(CurrentGroup::allFiles));
    });
}

} // namespace veilkeep
