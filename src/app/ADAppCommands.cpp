#include "app/ADApp.h"
#include "app/ADAppParts.h"

#include "filelist/Texts.h"
#include "groups/GroupNames.h"

namespace veilkeep {
namespace {

bool isAnySelected(FilesViewController& files, File::State state) {
    return files.filesController().isAnySelected([&](const File& file) { return file.state() == state; });
}

FileListActions::SortKey sortKey(Command command) {
    switch (command) {
    case Command::SortByPlace:
        return FileListActions::SortKey::Place;
    case Command::SortBySize:
        return FileListActions::SortKey::Size;
    case Command::SortByState:
        return FileListActions::SortKey::State;
    default:
        return FileListActions::SortKey::Name;
    }
}

} // namespace

// Of windows that this version does not have.
bool ADApp::exists(Command command) const {
    switch (command) {
    case Command::EditGroup:
    case Command::Password:
    case Command::Preferences:
    case Command::CheckForUpdates:
        return false;
    default:
        return true;
    }
}

void ADApp::perform(Command command) {
    if (!m_parts || !performOnList(command))
        performOnApplication(command);
}

// --- What the lists do ---

bool ADApp::performOnList(Command command) {
    FilesViewController& files = m_parts->list.files();
    GroupViewController& groups = m_parts->list.groups();
    FileListActions& actions = m_parts->actions;
    FilterController& filter = files.filterController();
    switch (command) {
    case Command::RestoreFiles:
        files.restoreDirectory();
        return true;
    case Command::PerformSanityCheck:
        files.performSanityCheckOfAll();
        return true;
    case Command::AddGroup:
        groups.addGroup();
        return true;
    case Command::DeleteGroup:
        groups.removeClickedGroupAction(groups.currentGroup());
        return true;
    case Command::RemoveItem:
    case Command::RemoveFromList:
        files.removeFromListAction();
        return true;
    case Command::RemoveFiles:
        files.removeFilesAction();
        return true;
    case Command::OpenFile:
        actions.openFileAction();
        return true;
    case Command::RevealFile:
        actions.menuRevealFileInFinder();
        return true;
    case Command::HideFiles:
        actions.hideSelected();
        return true;
    case Command::UnhideFiles:
        actions.unhideSelected();
        return true;
    case Command::SelectAll:
        files.filesController().setSelectedObjects(files.filesController().arrangedObjects());
        return true;
    case Command::HideCurrentGroup:
        groups.hideCurrentGroup();
        return true;
    case Command::UnhideCurrentGroup:
        groups.unhideCurrentGroup();
        return true;
    case Command::ShowAll:
        filter.setShowAll(true);
        return true;
    case Command::ShowHidden:
        filter.setShowOnlyHidden(true);
        return true;
    case Command::ShowVisible:
        filter.setShowOnlyVisible(true);
        return true;
    case Command::ShowBroken:
        filter.setShowOnlyInconsistent(true);
        return true;
    case Command::SortByName:
    case Command::SortByPlace:
    case Command::SortBySize:
    case Command::SortByState:
        sort(command);
        return true;
    default:
        return false;
    }
}

// The same key once more turns the order round.
void ADApp::sort(Command command) {
    m_isSortedAscending = m_sortedBy != command || !m_isSortedAscending;
    m_sortedBy = command;
    m_parts->actions.sort(sortKey(command), m_isSortedAscending);
}

// --- What the application and its window do ---

void ADApp::performOnApplication(Command command) {
    VeilkeepWindow* const window = m_parts ? m_parts->window.window() : nullptr;
    switch (command) {
    case Command::AddFiles:
        return whenAllowed([this] { openFilesPanel(); });
    case Command::OpenWith:
        return openWithApplicationOtherSelected();
    case Command::ManualAutoHide:
        return whenAllowed([this] { makeManualAutoHide(); });
    case Command::ManualAutoUnhide:
        return whenAllowed([this] { makeManualAutoUnhide(); });
    case Command::ShowVeilkeep:
        return showVeilkeep();
    case Command::CloseWindow:
        return closeAsked();
    case Command::Help:
        return openGuide({});
    case Command::Forum:
        return visitForum();
    case Command::SupportCenter:
        return visitSupportCenter();
    case Command::Feedback:
        return sendFeedback();
    case Command::About:
        return showAboutWindow();
    case Command::Quit:
        return applicationShouldTerminate();
    case Command::QuickLook:
        return window ? window->toggleQuickLook() : void();
    case Command::Search:
        return window ? window->focusSearch() : void();
    case Command::ToggleInfo:
        return window ? window->toggleInfoView() : void();
    default:
        return;
    }
}

void ADApp::whenAllowed(const std::function<void()>& operation) {
    if (m_parts && m_parts->list.window().operationAllowed())
        operation();
}

void ADApp::openFilesPanel() {
    const std::vector<std::string> chosen = m_parts->panels.chooseItemsToAdd();
    if (!chosen.empty())
        m_parts->list.turns().run([this, chosen] { m_parts->list.files().addFiles(chosen); });
}

void ADApp::openWithApplicationOtherSelected() {
    if (const auto chosen = m_parts->panels.chooseApplication(m_parts->applications.everyApplication()))
        m_parts->actions.openSelectedFileWithApplication(*chosen);
}

// A leaving like any other, but for the window, which stays, and the report.
void ADApp::makeManualAutoHide() {
    auto allWell = std::make_shared<bool>(true);
    m_parts->list.turns().leave([this, allWell] {
        *allWell = m_parts->list.groups().makeAutoHide(QStringLiteral("the user asked for it"));
    });
    m_parts->list.turns().run([this, allWell] {
        if (*allWell)
            return;
        HideOperations& operations = m_parts->list.files().hideOperations();
        operations.showErrorsMessage(tr("Some errors have been occured while hiding files"), QString(),
                                     {tr("OK")});
        operations.clearErrorList();
    });
}

void ADApp::makeManualAutoUnhide() {
    m_parts->list.turns().run([this] { m_parts->list.groups().autoUnhideThread(); });
}

void ADApp::hideOrShowGroup(const ListedGroup& group, bool hides) {
    whenAllowed([this, group, hides] {
        m_parts->list.turns().run([this, group, hides] {
            GroupViewController& groups = m_parts->list.groups();
            hides ? groups.hideGroup(group, false) : groups.unhideGroup(group, false);
        });
    });
}

// --- What menus show of it ---

QString ADApp::title(Command command) const {
    const VeilkeepWindow* const window = m_parts ? m_parts->window.window() : nullptr;
    const QString name = veilkeep::applicationName();
    switch (command) {
    case Command::About:
        return tr("About %1").arg(name);
    case Command::Quit:
        return tr("Quit %1").arg(name);
    case Command::Help:
        return tr("%1 Help").arg(name);
    case Command::ShowVeilkeep:
        return tr("Show %1…").arg(name);
    case Command::CloseWindow:
        return tr("Hide %1").arg(name);
    case Command::AddFiles:
        return tr("Add Items…");
    case Command::ManualAutoHide:
        return tr("Hide AutoHide Groups");
    case Command::ManualAutoUnhide:
        return tr("Show AutoHide Groups");
    case Command::ToggleInfo:
        return window && window->isInfoViewShown() ? tr(" Hide Info") : tr("Show Info");
    default:
        return {};
    }
}

CommandState ADApp::validate(Command command) const {
    CommandState state;
    state.title = title(command);
    if (command == Command::ToggleInfo)
        state.toolTip = m_parts && m_parts->window.window() && m_parts->window.window()->isInfoViewShown()
                            ? tr("Hide info pane")
                            : tr("Show info pane");
    if (!m_parts)
        return state;
    const bool isForWindow = m_parts->window.isVisible() && !activeModalWidget();
    if (!isForWindow || !m_parts->list.window().operationAllowedWithoutAsking()) {
        state.isEnabled = command == Command::About || command == Command::Quit;
        return state;
    }
    validateForList(command, state);
    return state;
}

void ADApp::validateForList(Command command, CommandState& state) const {
    FilesViewController& files = m_parts->list.files();
    const GroupViewController& groups = m_parts->list.groups();
    const FilterController& filter = files.filterController();
    const auto take = [&](const FileListActions::Item& item) {
        state.isEnabled = item.isEnabled;
        if (!item.title.isNull())
            state.title = item.title;
        state.toolTip = item.toolTip;
    };
    switch (command) {
    case Command::DeleteGroup:
    case Command::EditGroup:
        state.isEnabled = groups.currentGroup() && groups.currentGroup()->canBeRemoved();
        return;
    case Command::RemoveItem:
        state.title = groups.currentGroupName() == groupName::allFiles ? tr("Remove Item from List")
                                                                       : tr("Remove Item from Group");
        state.isEnabled = files.filesController().selectedCount() > 0;
        return;
    case Command::OpenFile:
    case Command::OpenWith:
    case Command::RevealFile:
    case Command::RemoveFromList:
        return take(m_parts->actions.validateMenuItem(static_cast<int>(command),
                                                      QString::fromStdString(groups.currentGroupName())));
    case Command::RemoveFiles:
        return take(m_parts->actions.validateToolbarItem(static_cast<int>(command)));
    case Command::HideFiles:
        state.isEnabled = isAnySelected(files, File::Visible);
        return;
    case Command::UnhideFiles:
        state.isEnabled = isAnySelected(files, File::Hidden);
        return;
    case Command::QuickLook:
        state.isEnabled = files.filesController().selectedCount() > 0;
        return;
    case Command::ShowAll:
        state.isChecked = filter.showAll();
        return;
    case Command::ShowHidden:
        state.isChecked = filter.showOnlyHidden();
        return;
    case Command::ShowVisible:
        state.isChecked = filter.showOnlyVisible();
        return;
    case Command::ShowBroken:
        state.isChecked = filter.showOnlyInconsistent();
        return;
    default:
        return;
    }
}

} // namespace veilkeep
