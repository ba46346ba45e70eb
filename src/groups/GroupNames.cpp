#include "groups/GroupNames.h"

#include "filelist/Texts.h"

#include <algorithm>

namespace veilkeep {
namespace {

constexpr const char* givenNames[] = {
    QT_TRANSLATE_NOOP("GroupNames", "All Files"),       QT_TRANSLATE_NOOP("GroupNames", "Custom Groups"),
    QT_TRANSLATE_NOOP("GroupNames", "Secret Pictures"), QT_TRANSLATE_NOOP("GroupNames", "Private Files"),
    QT_TRANSLATE_NOOP("GroupNames", "AutoHide Group"),  QT_TRANSLATE_NOOP("GroupNames", "New Group"),
};

bool isNumber(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char each) { return each >= '0' && each <= '9'; });
}

} // namespace

QString shownGroupName(const Group& group) {
    const std::string_view name = group.name();
    if (const auto given = std::ranges::find(givenNames, name); given != std::end(givenNames))
        return QCoreApplication::translate("GroupNames", *given);
    const std::string numbered = std::string(groupName::newGroup) + ' ';
    if (name.starts_with(numbered) && isNumber(name.substr(numbered.size())))
        return QCoreApplication::translate("GroupNames", "New Group %1")
            .arg(shownPath(name.substr(numbered.size())));
    return shownPath(name);
}

} // namespace veilkeep
