#include "core/storage/DefaultsKeys.h"

namespace veilkeep {
namespace {

using Kind = DefaultsKeyRow::Kind;
using FirstWrite = DefaultsKeyRow::FirstWrite;

constexpr DefaultsKeyRow rows[] = {
    {defaultsKey::passwordEnabled, Kind::Boolean, "false", FirstWrite::ByFirstRead,
     "preferences, `veilkeepctl password`", "whatever is protected", "the application password is on"},
    {defaultsKey::passwordDigest, Kind::String, "no entry is right", FirstWrite::WhenSet,
     "preferences, `veilkeepctl password`", "the prompt for the password",
     "MD5 digest of the password, 32 lower-case hexadecimal digits"},
    {defaultsKey::playSounds, Kind::Boolean, "true", FirstWrite::AtStart, "preferences", "sounds",
     "sounds are played"},
    {defaultsKey::cleanRecentItems, Kind::Boolean, "nobody has answered the question", FirstWrite::WhenSet,
     "the question about recent items, preferences", "hiding",
     "an item's traces in lists of recent files are removed when it is hidden"},
    {defaultsKey::recentsQuestionAnswered, Kind::Boolean, "false", FirstWrite::WhenSet,
     "the question about recent items, preferences", "hiding", "the question is not asked again"},
    {defaultsKey::noRemoveWarning, Kind::Boolean, "removing items from the list is asked about",
     FirstWrite::WhenSet, "the box in that question, preferences", "removing items",
     "any value, whatever the name says: it is not asked"},
    {defaultsKey::allowPrivilidgedFiles, Kind::Boolean, "false", FirstWrite::ByFirstRead, "preferences",
     "hiding and bringing back", "items that need administrator rights may be handled"},
    {defaultsKey::showMenuIcon, Kind::Boolean, "true", FirstWrite::ByFirstRead, "preferences",
     "the icon in the panel", "the icon is shown"},
    {defaultsKey::showMenuIconOfOld, Kind::Integer, "nothing", FirstWrite::WhenSet,
     "preferences, when the window leaves the taskbar", "nothing", "kept for compatibility"},
    {defaultsKey::dockIconHidden, Kind::Boolean, "what `Info.plist` says", FirstWrite::WhenSet, "preferences",
     "the start, once", "the program has no entry in the taskbar and runs from its icon in the panel"},
    {defaultsKey::hideOnSleep, Kind::Boolean, "true", FirstWrite::WhenSet, "preferences",
     "leaving and coming back", "AutoHide groups vanish when the computer goes to sleep"},
    {defaultsKey::hideOnLock, Kind::Boolean, "true", FirstWrite::WhenSet, "preferences",
     "leaving and coming back", "AutoHide groups vanish when the screen is locked"},
    {defaultsKey::hideOnSessionSwitch, Kind::Boolean, "true", FirstWrite::WhenSet, "preferences",
     "leaving and coming back", "AutoHide groups vanish when another user's session comes to the front"},
    {defaultsKey::hideOnQuit, Kind::Boolean, "true", FirstWrite::WhenSet, "preferences", "quitting",
     "AutoHide groups vanish when Veilkeep ends; else they are visible at the next start"},
    {defaultsKey::autoHideExample, Kind::Integer, "there was no example yet", FirstWrite::AtStart,
     "the first start", "the start", "1: the example of an AutoHide group was made"},
    {defaultsKey::noOfferToInstall, Kind::Boolean, "false", FirstWrite::WhenSet,
     "the box in the offer to install", "quitting",
     "a copy run from elsewhere does not offer to install itself"},
    {defaultsKey::toldOfNoMenuIcon, Kind::Boolean, "false", FirstWrite::WhenSet,
     "closing the window where the desktop has no place for the icon", "closing the window",
     "the user was told how to get the window back"},
    {defaultsKey::lastUpdateCheck, Kind::String, "never", FirstWrite::WhenSet, "Check for Updates…",
     "the Update page of the preferences", "when it last succeeded, as ISO 8601 in UTC"},
    {defaultsKey::windowGeometry, Kind::String, "a size that fits, in the middle", FirstWrite::WhenSet,
     "closing the window", "the window", "its place and size"},
    {defaultsKey::windowSplitter, Kind::String, "widths that fit", FirstWrite::WhenSet, "closing the window",
     "the window", "the widths of its panes"},
    {defaultsKey::infoPaneHidden, Kind::Boolean, "false", FirstWrite::WhenSet, "closing the window",
     "the window", "the info pane is not shown"},
};

} // namespace

std::span<const DefaultsKeyRow> defaultsKeyRows() {
    return rows;
}

} // namespace veilkeep
