#include "widgets/mainwindow/CommandTexts.h"

#include "filelist/Texts.h"

#include <QCoreApplication>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(MainMenu)
};

QKeySequence key(const char* sequence) {
    return QKeySequence(QString::fromLatin1(sequence), QKeySequence::PortableText);
}

} // namespace

QString commandTitle(Command command) {
    switch (command) {
    case Command::AddFiles:
        return Texts::tr("Add Items…");
    case Command::RestoreFiles:
        return Texts::tr("Find Hidden Items…");
    case Command::PerformSanityCheck:
        return Texts::tr("Find Inconsistent Items");
    case Command::AddGroup:
        return Texts::tr("Add Group");
    case Command::DeleteGroup:
        return Texts::tr("Remove Group");
    case Command::EditGroup:
        return Texts::tr("Edit Group…");
    case Command::RemoveItem:
        return Texts::tr("Remove Item from List");
    case Command::OpenFile:
        return Texts::tr("Open");
    case Command::OpenWith:
        return Texts::tr("Open With");
    case Command::RevealFile:
        return Texts::tr("Show in File Manager");
    case Command::RemoveFromList:
        return Texts::tr("Remove From List");
    case Command::RemoveFiles:
        return Texts::tr("Remove Item");
    case Command::HideFiles:
        return Texts::tr("Hide");
    case Command::UnhideFiles:
        return Texts::tr("Unhide");
    case Command::QuickLook:
        return Texts::tr("Quick Preview");
    case Command::SelectAll:
        return Texts::tr("Select All");
    case Command::Search:
        return Texts::tr("Search");
    case Command::HideCurrentGroup:
        return Texts::tr("Hide Group");
    case Command::UnhideCurrentGroup:
        return Texts::tr("Unhide Group");
    case Command::ManualAutoHide:
        return Texts::tr("Hide AutoHide Groups");
    case Command::ManualAutoUnhide:
        return Texts::tr("Show AutoHide Groups");
    case Command::ToggleInfo:
        return Texts::tr("Show Info");
    case Command::ShowAll:
        return Texts::tr("All");
    case Command::ShowHidden:
        return Texts::tr("Hidden");
    case Command::ShowVisible:
        return Texts::tr("Visible");
    case Command::ShowBroken:
        return Texts::tr("Broken");
    case Command::SortByName:
        return Texts::tr("Name");
    case Command::SortByPlace:
        return Texts::tr("Place");
    case Command::SortBySize:
        return Texts::tr("Size");
    case Command::SortByState:
        return Texts::tr("State");
    case Command::Password:
        return Texts::tr("Set Password");
    case Command::ShowVeilkeep:
        return Texts::tr("Show %1…").arg(applicationName());
    case Command::CloseWindow:
        return Texts::tr("Hide %1").arg(applicationName());
    case Command::Help:
        return Texts::tr("%1 Help").arg(applicationName());
    case Command::Forum:
        return Texts::tr("Forum");
    case Command::SupportCenter:
        return Texts::tr("Support Center");
    case Command::Feedback:
        return Texts::tr("Send Feedback…");
    case Command::CheckForUpdates:
        return Texts::tr("Check for Updates…");
    case Command::Preferences:
        return Texts::tr("Preferences…");
    case Command::About:
        return Texts::tr("About %1").arg(applicationName());
    case Command::Quit:
        return Texts::tr("Quit %1").arg(applicationName());
    }
    return {};
}

QList<QKeySequence> commandShortcuts(Command command) {
    static constexpr struct {
        Command command;
        const char* key;
    } table[] = {
        {Command::AddFiles, "Ctrl+O"},
        {Command::RestoreFiles, "Ctrl+Shift+O"},
        {Command::OpenFile, "Ctrl+Return"},
        {Command::RevealFile, "Ctrl+R"},
        {Command::CloseWindow, "Ctrl+L"},
        {Command::CloseWindow, "Ctrl+W"},
        {Command::Quit, "Ctrl+Q"},
        {Command::SelectAll, "Ctrl+A"},
        {Command::Search, "Ctrl+F"},
        {Command::Preferences, "Ctrl+,"},
        {Command::ShowAll, "Ctrl+1"},
        {Command::ShowHidden, "Ctrl+2"},
        {Command::ShowVisible, "Ctrl+3"},
        {Command::ShowBroken, "Ctrl+4"},
        {Command::ToggleInfo, "Ctrl+I"},
        {Command::AddGroup, "Ctrl+Shift+N"},
        {Command::EditGroup, "Ctrl+E"},
        {Command::HideCurrentGroup, "Ctrl+Shift+Right"},
        {Command::ManualAutoHide, "Ctrl+H"},
        {Command::UnhideCurrentGroup, "Ctrl+Shift+Left"},
        {Command::ManualAutoUnhide, "Ctrl+U"},
        {Command::Help, "F1"},
    };
    QList<QKeySequence> keys;
    for (const auto& row : table) {
        if (row.command == command)
            keys << key(row.key);
    }
    return keys;
}

QKeySequence keyOfViews(Command command) {
    if (command == Command::HideFiles)
        return key("Ctrl+Right");
    if (command == Command::UnhideFiles)
        return key("Ctrl+Left");
    if (command == Command::QuickLook)
        return key("Space");
    return command == Command::RemoveItem ? key("Del") : QKeySequence();
}

QAction::MenuRole commandRole(Command command) {
    if (command == Command::Quit)
        return QAction::QuitRole;
    if (command == Command::About)
        return QAction::AboutRole;
    return command == Command::Preferences ? QAction::PreferencesRole : QAction::NoRole;
}

} // namespace veilkeep
