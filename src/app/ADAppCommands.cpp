#include "app/ADApp.h"
#include "app/ADAppParts.h"

#include "groups/GroupNames.h"

#include <algorithm>

namespace veilkeep {
namespace {

FilesController& itemsIn(ADApp::Parts& parts) {
    return parts.list.files().filesController();
}

bool isAnySelected(ADApp::Parts& parts, File::State state) {
    return itemsIn(parts).isAnySelected([&](const File& file) { return file.state() == state; });
}

void take(const FileListActions::Item& item, CommandState& state) {
    state.isEnabled = item.isEnabled;
    if (!item.title.isNull())
        state.title = item.title;
    state.toolTip = item.toolTip;
}

template <Command command>
void validateMenuItem(ADApp::Parts& parts, CommandState& state) {
    const auto group = QString::fromStdString(parts.list.groups().currentGroupName());
    take(parts.actions.validateMenuItem(static_cast<int>(command), group), state);
}

void validateRemoval(ADApp::Parts& parts, CommandState& state) {
    const bool isOfAll = parts.list.groups().currentGroupName() == groupName::allFiles;
    state.title = isOfAll ? ADApp::tr("Remove Item from List") : ADApp::tr("Remove Item from Group");
    state.isEnabled = itemsIn(parts).selectedCount() > 0;
}

void validateGroupChange(ADApp::Parts& parts, CommandState& state) {
    const ListedGroup group = parts.list.groups().currentGroup();
    state.isEnabled = group && group->canBeRemoved();
}

template <bool (FilterController::*isOn)() const>
void validateFilter(ADApp::Parts& parts, CommandState& state) {
    state.isChecked = (parts.list.files().filterController().*isOn)();
}

} // namespace

// A command without a row does not exist. Without a validation it can always be asked for.
struct ADApp::CommandRow {
    Command command;
    void (*perform)(ADApp& application);
    void (*validate)(Parts& parts, CommandState& state) = [](Parts&, CommandState&) {};
};

const ADApp::CommandRow ADApp::commandRows[] = {
    // --- What the lists do ---
    {Command::AddFiles, [](ADApp& app) { app.whenAllowed([&app] { app.openFilesPanel(); }); }},
    {Command::RestoreFiles, [](ADApp& app) { app.files().restoreDirectory(); }},
    {Command::PerformSanityCheck, [](ADApp& app) { app.files().performSanityCheckOfAll(); }},
    {Command::AddGroup, [](ADApp& app) { app.groups().addGroup(); }},
    {Command::DeleteGroup,
     [](ADApp& app) { app.groups().removeClickedGroupAction(app.groups().currentGroup()); },
     validateGroupChange},
    {Command::EditGroup, [](ADApp& app) { app.groups().editGroup(app.groups().currentGroup()); },
     validateGroupChange},
    {Command::RemoveItem, [](ADApp& app) { app.files().removeFromListAction(); }, validateRemoval},
    {Command::RemoveFromList, [](ADApp& app) { app.files().removeFromListAction(); },
     validateMenuItem<Command::RemoveFromList>},
    {Command::RemoveFiles, [](ADApp& app) { app.files().removeFilesAction(); },
     [](Parts& parts, CommandState& state) {
         take(parts.actions.validateToolbarItem(static_cast<int>(Command::RemoveFiles)), state);
     }},
    {Command::OpenFile, [](ADApp& app) { app.m_parts->actions.openFileAction(); },
     validateMenuItem<Command::OpenFile>},
    {Command::OpenWith, [](ADApp& app) { app.openWithApplicationOtherSelected(); },
     validateMenuItem<Command::OpenWith>},
    {Command::RevealFile, [](ADApp& app) { app.m_parts->actions.menuRevealFileInFinder(); },
     validateMenuItem<Command::RevealFile>},
    {Command::HideFiles, [](ADApp& app) { app.m_parts->actions.hideSelected(); },
     [](Parts& parts, CommandState& state) { state.isEnabled = isAnySelected(parts, File::Visible); }},
    {Command::UnhideFiles, [](ADApp& app) { app.m_parts->actions.unhideSelected(); },
     [](Parts& parts, CommandState& state) { state.isEnabled = isAnySelected(parts, File::Hidden); }},
    {Command::SelectAll,
     [](ADApp& app) { itemsIn(*app.m_parts).setSelectedObjects(itemsIn(*app.m_parts).arrangedObjects()); }},
    {Command::HideCurrentGroup, [](ADApp& app) { app.groups().hideCurrentGroup(); }},
    {Command::UnhideCurrentGroup, [](ADApp& app) { app.groups().unhideCurrentGroup(); }},
    {Command::ManualAutoHide, [](ADApp& app) { app.whenAllowed([&app] { app.makeManualAutoHide(); }); }},
    {Command::ManualAutoUnhide, [](ADApp& app) { app.whenAllowed([&app] { app.makeManualAutoUnhide(); }); }},

    // --- What the table shows, and how ---
    {Command::ShowAll, [](ADApp& app) { app.files().filterController().setShowAll(true); },
     validateFilter<&FilterController::showAll>},
    {Command::ShowHidden, [](ADApp& app) { app.files().filterController().setShowOnlyHidden(true); },
     validateFilter<&FilterController::showOnlyHidden>},
    {Command::ShowVisible, [](ADApp& app) { app.files().filterController().setShowOnlyVisible(true); },
     validateFilter<&FilterController::showOnlyVisible>},
    {Command::ShowBroken, [](ADApp& app) { app.files().filterController().setShowOnlyInconsistent(true); },
     validateFilter<&FilterController::showOnlyInconsistent>},
    {Command::SortByName, [](ADApp& app) { app.sort(FileListActions::SortKey::Name); }},
    {Command::SortByPlace, [](ADApp& app) { app.sort(FileListActions::SortKey::Place); }},
    {Command::SortBySize, [](ADApp& app) { app.sort(FileListActions::SortKey::Size); }},
    {Command::SortByState, [](ADApp& app) { app.sort(FileListActions::SortKey::State); }},

    // --- What the application and its window do ---
    {Command::ShowVeilkeep, [](ADApp& app) { app.showVeilkeep(); }},
    {Command::CloseWindow, [](ADApp& app) { app.closeAsked(); }},
    {Command::QuickLook, [](ADApp& app) { app.inWindow(&VeilkeepWindow::toggleQuickLook); },
     [](Parts& parts, CommandState& state) { state.isEnabled = itemsIn(parts).selectedCount() > 0; }},
    {Command::Search, [](ADApp& app) { app.inWindow(&VeilkeepWindow::focusSearch); }},
    {Command::ToggleInfo, [](ADApp& app) { app.inWindow(&VeilkeepWindow::toggleInfoView); }},
    {Command::Preferences, [](ADApp& app) { app.showPreferenceWindow(); }},
    {Command::Password, [](ADApp& app) { app.openPassDialog(); }},
    {Command::Help, [](ADApp& app) { app.openGuide({}); }},
    {Command::Forum, [](ADApp& app) { app.visitForum(); }},
    {Command::SupportCenter, [](ADApp& app) { app.visitSupportCenter(); }},
    {Command::Feedback, [](ADApp& app) { app.sendFeedback(); }},
    {Command::CheckForUpdates, [](ADApp& app) { app.checkForUpdates(); }},
    {Command::About, [](ADApp& app) { app.showAboutWindow(); }},
    {Command::Quit, [](ADApp& app) { app.applicationShouldTerminate(); }},
};

const ADApp::CommandRow* ADApp::rowOf(Command command) {
    const auto* const row = std::ranges::find(commandRows, command, &CommandRow::command);
    return row == std::end(commandRows) ? nullptr : row;
}

bool ADApp::exists(Command command) const {
    return rowOf(command) != nullptr;
}

void ADApp::perform(Command command) {
    if (const CommandRow* const row = rowOf(command); row && m_parts)
        row->perform(*this);
}

FilesViewController& ADApp::files() const {
    return m_parts->list.files();
}

GroupViewController& ADApp::groups() const {
    return m_parts->list.groups();
}

void ADApp::inWindow(void (VeilkeepWindow::*operation)()) {
    if (VeilkeepWindow* const window = m_parts->window.window())
        (window->*operation)();
}

// The same key once more turns the order round.
void ADApp::sort(SortKey key) {
    m_isSortedAscending = m_sortedBy != key || !m_isSortedAscending;
    m_sortedBy = key;
    m_parts->actions.sort(key, m_isSortedAscending);
}

void ADApp::whenAllowed(const std::function<void()>& operation) {
    if (m_parts->list.window().operationAllowedWithoutAsking())
        return operation();
    whenIdle([this, operation] {
        if (m_parts->list.window().operationAllowed())
            operation();
    });
}

// One at a time: one that is open comes to the front.
void ADApp::openFilesPanel() {
    whenIdle([this] {
        if (m_parts->panels.raiseOpen())
            return;
        const std::vector<std::string> chosen = m_parts->panels.chooseItemsToAdd();
        if (!chosen.empty())
            m_parts->list.window().addFiles(chosen);
    });
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

CommandState ADApp::validate(Command command) const {
    CommandState state;
    if (command == Command::ToggleInfo)
        nameInfoPane(state);
    if (command == Command::Password)
        namePassword(state);
    const CommandRow* const row = rowOf(command);
    if (!m_parts || !row)
        return state;
    const bool isForWindow = m_parts->window.isVisible() && !activeModalWidget();
    if (isForWindow && m_parts->list.window().operationAllowedWithoutAsking())
        row->validate(*m_parts, state);
    else
        state.isEnabled = command == Command::About || command == Command::Quit;
    return state;
}

void ADApp::nameInfoPane(CommandState& state) const {
    const VeilkeepWindow* const window = m_parts ? m_parts->window.window() : nullptr;
    const bool isShown = window && window->isInfoViewShown();
    state.title = isShown ? tr(" Hide Info") : tr("Show Info");
    state.toolTip = isShown ? tr("Hide info pane") : tr("Show info pane");
}

} // namespace veilkeep
