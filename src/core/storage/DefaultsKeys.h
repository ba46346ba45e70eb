#pragma once

#include <span>

// Every key of the user defaults. docs/settings.md is made from the table.
namespace veilkeep {

namespace defaultsKey {
inline constexpr const char* passwordEnabled = "UPW";
inline constexpr const char* passwordDigest = "Password";
inline constexpr const char* playSounds = "PlaySounds";
inline constexpr const char* cleanRecentItems = "CleanRecentItems";
inline constexpr const char* recentsQuestionAnswered = "CleanRecentItems_UserAcknowledged";
inline constexpr const char* noRemoveWarning = "ShowRemoveWarning"; // any value: no warning
inline constexpr const char* allowPrivilidgedFiles = "allowPrivilidgedFiles";
inline constexpr const char* showMenuIcon = "ADShowMenuIcon";
inline constexpr const char* showMenuIconOfOld = "QSShowMenuIcon";
inline constexpr const char* dockIconHidden = "LSUIElement";
inline constexpr const char* hideOnSleep = "AutoHideOnSleep";
inline constexpr const char* hideOnLock = "AutoHideOnLock";
inline constexpr const char* hideOnSessionSwitch = "AutoHideOnSessionSwitch";
inline constexpr const char* hideOnQuit = "AutoHideOnQuit";
inline constexpr const char* autoHideExample = "AutoHideExample";
inline constexpr const char* noOfferToInstall = "SuppressAppShouldBeMoved";
inline constexpr const char* toldOfNoMenuIcon = "ToldOfMissingMenuIcon";
inline constexpr const char* lastUpdateCheck = "LastUpdateCheck";
inline constexpr const char* windowGeometry = "MainWindow.geometry"; // "X Y WIDTH HEIGHT"
inline constexpr const char* windowSplitter = "MainWindow.splitter"; // "LEFT RIGHT"
inline constexpr const char* infoPaneHidden = "MainWindow.infoHidden";
} // namespace defaultsKey

// What is known of one key. Texts are English, for documents.
struct DefaultsKeyRow {
    enum class Kind { Boolean, Integer, String };
    enum class FirstWrite { WhenSet, ByFirstRead, AtStart }; // when an absent key gets a value

    const char* key;
    Kind kind;
    const char* whenAbsent; // what holds then
    FirstWrite firstWrite;
    const char* writer;
    const char* reader;
    const char* meaning;
};
std::span<const DefaultsKeyRow> defaultsKeyRows();

} // namespace veilkeep
