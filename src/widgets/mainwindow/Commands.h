#pragma once

#include <QString>

#include <optional>

namespace veilkeep {

// What menus, toolbar and keys of the main window and the status menu ask for. Numbers are the tags of the
// menu items, where there is one.
enum class Command {
    AddFiles = 1000,
    RestoreFiles,
    PerformSanityCheck,
    AddGroup,
    DeleteGroup = 901,
    EditGroup = 902,
    RemoveItem = 903,
    OpenFile = 103,
    OpenWith = 104,
    RevealFile = 105,
    RemoveFromList = 106,
    RemoveFiles = 489, // of the toolbar
    HideFiles = 1100,
    UnhideFiles,
    QuickLook,
    SelectAll,
    Search,
    HideCurrentGroup,
    UnhideCurrentGroup,
    ManualAutoHide,
    ManualAutoUnhide,
    ToggleInfo,
    ShowAll,
    ShowHidden,
    ShowVisible,
    ShowBroken,
    SortByName,
    SortByPlace,
    SortBySize,
    SortByState,
    Password,
    ShowVeilkeep,
    CloseWindow,
    Help,
    Forum,
    SupportCenter,
    Feedback,
    CheckForUpdates,
    Preferences,
    About = 0, // of those that stay enabled behind the password
    Quit = -1,
};

// A null title leaves it as it is.
struct CommandState {
    bool isEnabled = true;
    QString title = {};
    QString toolTip = {};
    std::optional<bool> isChecked = {};
};

// Who carries them out. Main thread.
class CommandTarget {
public:
    virtual ~CommandTarget() = default;

    virtual void perform(Command command) = 0;
    virtual CommandState validate(Command command) const = 0;
    virtual bool exists(Command command) const = 0; // false: there is no such menu item

protected:
    CommandTarget() = default;
    CommandTarget(const CommandTarget&) = default;
    CommandTarget& operator=(const CommandTarget&) = default;
};

} // namespace veilkeep
