#pragma once

#include "platform/Request.h"

#include <QString>

#include <cstddef>
#include <limits>
#include <span>

namespace veilkeep {

enum class RequestCommand {
    Add,
    Remove,
    Hide,
    Unhide,
    List,
    Status,
    Check,
    Locate,
    Restore,
    Merge,
    Groups,
    Group,
    Move,
    AutoHide,
    AutoUnhide
};

// How a command takes the options that name a group, or all items.
enum class GroupUse {
    None,
    Optional,
    InsteadOfPaths, // or all items; paths are not taken then
    Needed,
};

// What each command takes, and what must be asked before it is worked on.
struct RequestRule {
    static constexpr std::size_t anyNumber = std::numeric_limits<std::size_t>::max();

    const char* name;
    RequestCommand command;
    bool passesGate;  // where a password is set: it changes something, or tells what is hidden
    bool changesList; // not done on a list that a newer version wrote
    std::size_t leastPaths;
    std::size_t mostPaths;
    GroupUse groupUse = GroupUse::None;

    // May be answered from the files of the lists while others change them.
    bool onlyReads() const {
        return command == RequestCommand::List || command == RequestCommand::Status ||
               command == RequestCommand::Groups;
    }
};

std::span<const RequestRule> requestRules();

// Null for a command that is not known.
const RequestRule* requestRule(const QString& command);

// Whether the user hides items by a menu of the desktop: he is told in his language.
bool isFromMenu(const Request& request);

// Whether the password is asked for before the request is worked on. What is hidden by a menu shows nothing,
// and goes without.
bool passesGate(const Request& request);

// Names of options of a Request, beside its paths.
namespace requestOption {
inline constexpr auto interactive = "interactive"; // bool: questions are answered, so ask rather than collect
inline constexpr auto state = "state";             // of "list", a text: stateName() of the wanted ones
inline constexpr auto name = "name";               // of "list", a text: what their names hold
inline constexpr auto group = "group";             // bytes: a group's name
inline constexpr auto all = "all";                 // bool, of "hide" and "unhide": instead of paths
inline constexpr auto fromMenu = "fromMenu";       // bool, of "hide" with paths: isFromMenu()

// Of "group": what is done, a text, and what that takes beside the group.
inline constexpr auto action = "action";     // groupAction
inline constexpr auto newName = "newName";   // of "rename", bytes
inline constexpr auto icon = "icon";         // of "icon", bytes: the absolute path of a file, or a name
inline constexpr auto autoHide = "autoHide"; // of "autohide", bool
inline constexpr auto position = "position"; // of "order", a number: 1 for the first group that can move
inline constexpr auto before = "before";     // of "order", bytes: the group before which it is to stand
} // namespace requestOption

namespace groupAction {
inline constexpr auto add = "add"; // without a name: under one that no group has
inline constexpr auto remove = "remove";
inline constexpr auto rename = "rename";
inline constexpr auto icon = "icon";
inline constexpr auto autoHide = "autohide";
inline constexpr auto order = "order";
} // namespace groupAction

} // namespace veilkeep
