#include "prefs/SettingBoxes.h"

#include "core/storage/DefaultsKeys.h"

#include <algorithm>
#include <iterator>

namespace veilkeep {
namespace {

struct Row {
    PrefsBox box;
    const char* key;
    bool whenAbsent;
};

constexpr Row rows[] = {
    {PrefsBox::ShowInMenuBarBox, defaultsKey::showMenuIcon, true},
    {PrefsBox::AllowPrivilidgedFilesBox, defaultsKey::allowPrivilidgedFiles, false},
    {PrefsBox::PlaySoundsBox, defaultsKey::playSounds, true},
    {PrefsBox::AskBeforeRemovingBox, defaultsKey::noRemoveWarning, true},
    {PrefsBox::CleanRecentItemsBox, defaultsKey::cleanRecentItems, false},
    {PrefsBox::HideOnSleepBox, defaultsKey::hideOnSleep, true},
    {PrefsBox::HideOnLockBox, defaultsKey::hideOnLock, true},
    {PrefsBox::HideOnSessionSwitchBox, defaultsKey::hideOnSessionSwitch, true},
    {PrefsBox::HideOnQuitBox, defaultsKey::hideOnQuit, true},
};

const Row* rowOf(PrefsBox box) {
    const auto* const row = std::ranges::find(rows, box, &Row::box);
    return row == std::end(rows) ? nullptr : row;
}

} // namespace

// Any value at all says that removing is not asked about.
bool SettingBoxes::isOn(PrefsBox box) const {
    const Row* const row = rowOf(box);
    if (!row)
        return false;
    if (box == PrefsBox::AskBeforeRemovingBox)
        return !m_defaults.contains(row->key);
    return m_defaults.boolean(row->key).value_or(row->whenAbsent);
}

Result<void> SettingBoxes::set(PrefsBox box, bool isOn) {
    const Row* const row = rowOf(box);
    if (!row)
        return Error{ErrorCode::InvalidArgument, "set a preference", {}, 0};
    const bool isRemoval = box == PrefsBox::AskBeforeRemovingBox;
    const bool answersQuestion = box == PrefsBox::CleanRecentItemsBox;
    if (isRemoval && isOn)
        m_defaults.remove(row->key);
    else
        m_defaults.set(row->key, isRemoval || isOn);
    if (answersQuestion)
        m_defaults.set(defaultsKey::recentsQuestionAnswered, true);
    auto stored = m_defaults.synchronize();
    if (!stored) {
        m_defaults.discard(row->key);
        if (answersQuestion)
            m_defaults.discard(defaultsKey::recentsQuestionAnswered);
    }
    return stored;
}

} // namespace veilkeep
