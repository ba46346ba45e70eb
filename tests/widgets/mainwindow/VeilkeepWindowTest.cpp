#include "core/storage/DefaultsKeys.h"
#include "tests/widgets/mainwindow/WindowWorld.h"
#include "widgets/controls/FilterBar.h"
#include "widgets/controls/MessageBar.h"
#include "widgets/grouplist/GroupPanel.h"
#include "widgets/mainwindow/InfoPane.h"
#include "widgets/mainwindow/SummaryLine.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

using Names = std::vector<std::string>;

QAbstractButton* buttonNamed(const QWidget& within, const QString& name) {
    for (QAbstractButton* const button : within.findChildren<QAbstractButton*>()) {
        if (button->accessibleName() == name || button->text() == name)
            return button;
    }
    return nullptr;
}

QList<QAction*> menuActions(const VeilkeepWindow& window) {
    QList<QAction*> actions;
    for (const QMenu* const menu : window.menuBar()->findChildren<QMenu*>())
        actions << menu->actions();
    return actions;
}

QMenu* menuTitled(const VeilkeepWindow& window, const QString& title) {
    for (QMenu* const menu : window.menuBar()->findChildren<QMenu*>())
        if (menu->title().remove('&') == title)
            return menu;
    return nullptr;
}

TEST(VeilkeepWindowTest, TitlesAndStatesAreThoseOfValidation) {
    WindowWorld world;
    world.commands.absent = {Command::CheckForUpdates, Command::Password};
    world.commands.states[Command::RemoveFiles] = {false, "Remove Items", {}};
    world.commands.states[Command::ShowHidden].isChecked = true;
    VeilkeepWindow& window = world.show();

    const auto* const remove = buttonNamed(window, "Remove Items");
    ASSERT_TRUE(remove);
    EXPECT_FALSE(remove->isEnabled());
    EXPECT_TRUE(window.action(Command::ShowHidden)->isChecked());
    for (const QAction* const action : menuActions(window))
        EXPECT_FALSE(action->text().contains("Password") || action->text().contains("Updates"));

    world.commands.states[Command::RemoveItem] = {true, "Remove Item from Group", {}, {}};
    window.validateCommands();
    EXPECT_TRUE(
        window.action(Command::RemoveItem)->text().remove('&').startsWith("Remove Item from Group\t"));
}

TEST(VeilkeepWindowTest, KeysAndButtonsRunWhatIsAllowed) {
    WindowWorld world;
    VeilkeepWindow& window = world.show();
    realInput::key("Ctrl+O");
    EXPECT_TRUE(eventually([&] { return world.commands.performed.size() == 1; }));
    realInput::click(*buttonNamed(window, "Add Items…"));
    EXPECT_TRUE(eventually([&] { return world.commands.performed.size() == 2; }));
    world.commands.states[Command::AddGroup].isEnabled = false; // nobody has told the window
    realInput::key("Ctrl+Shift+N");
    const std::vector<Command> expected = {Command::AddFiles, Command::AddFiles};
    EXPECT_EQ(world.commands.performed, expected);
    EXPECT_FALSE(window.action(Command::AddGroup)->isEnabled());
}

TEST(VeilkeepWindowTest, NoKeyAndNoLetterIsGivenTwice) {
    WindowWorld world;
    const VeilkeepWindow& window = world.make();
    std::set<QString> keys;
    for (const QAction* const action : menuActions(window)) {
        for (const QKeySequence& key : action->shortcuts())
            EXPECT_TRUE(keys.insert(key.toString()).second) << key.toString().toStdString();
    }
    EXPECT_GT(keys.size(), 15U);
    QList<QWidget*> menus{window.menuBar()};
    for (QMenu* const menu : window.menuBar()->findChildren<QMenu*>())
        menus << menu;
    for (const QWidget* const menu : menus) {
        std::set<QString> letters;
        for (const QAction* const action : menu->actions()) {
            const QKeySequence letter = QKeySequence::mnemonic(action->text());
            if (action->isSeparator() || !action->isVisible())
                continue;
            EXPECT_TRUE(!letter.isEmpty() && letters.insert(letter.toString()).second)
                << action->text().toStdString();
        }
    }
}

struct ThreeItems : WindowWorld {
    ThreeItems() {
        for (const char* const name : {"apple", "pear", "plum"})
            world.add(tree.makeFile(std::string("folder/") + name), world.row(2));
    }
    ScratchTree tree;
};

TEST(VeilkeepWindowTest, TheSearchFieldAndTheFilterAreOne) {
    ThreeItems world;
    VeilkeepWindow& window = world.show();
    realInput::key("Ctrl+F");
    EXPECT_TRUE(eventually([&] { return world.searchField().hasFocus(); }));
    realInput::type("p");
    realInput::type("l");
    EXPECT_TRUE(eventually([&] { return world.shownNames() == Names{"apple", "plum"}; }));
    realInput::key("Escape");
    EXPECT_TRUE(eventually([&] { return world.shownNames().size() == 3; }));
    EXPECT_TRUE(world.searchField().text().isEmpty());
    realInput::key("Escape");
    EXPECT_TRUE(eventually([&] { return world.part<FilesTableView>().hasFocus(); }));

    realInput::click(*buttonNamed(world.part<FilterBar>(), "Hidden"));
    EXPECT_TRUE(world.files().filterController().showOnlyHidden());
    EXPECT_TRUE(world.shownNames().empty());
    world.files().filterController().setSearchText("x");
    EXPECT_EQ(world.searchField().text(), "x");
    world.world.groups.selectRow(2);
    EXPECT_TRUE(world.searchField().text().isEmpty());
    EXPECT_EQ(world.part<FilterBar>().filter(), FilterBar::All);
    EXPECT_TRUE(window.isVisible());
}

TEST(VeilkeepWindowTest, TheSummaryAndItsSwitchFollowTheSelection) {
    ThreeItems world;
    world.show();
    auto& summary = world.part<SummaryLine>();
    const auto text = [&] { return summary.findChild<QLabel*>()->text(); };
    EXPECT_EQ(text(), "3 items");
    EXPECT_FALSE(summary.selectionSwitch().isEnabled());

    const auto all = world.files().filesController().arrangedObjects();
    world.files().filesController().setSelectedObjects({all[0], all[1]});
    ASSERT_TRUE(eventually([&] { return summary.selectionSwitch().isEnabled(); }));
    realInput::click(summary.selectionSwitch());
    EXPECT_TRUE(eventually([&] { return text() == QString("3 items · 2 hidden"); }));
    EXPECT_EQ(summary.selectionSwitch().value(), OnOffSwitch::On);
    world.files().filesController().setSelectedObjects(all);
    EXPECT_TRUE(eventually([&] { return summary.selectionSwitch().value() == OnOffSwitch::Mixed; }));
}

TEST(VeilkeepWindowTest, PlaceAndPanesAreKept) {
    WindowWorld world;
    VeilkeepWindow& window = world.show();
    window.setGeometry(60, 70, 900, 640);
    EXPECT_TRUE(eventually([&] { return world.part<InfoPane>().width() > 200; }));
    const QSignalSpy told(&window, &VeilkeepWindow::infoViewStateChangedTo);
    realInput::key("Ctrl+I");
    ASSERT_EQ(told.count(), 1);
    EXPECT_FALSE(told[0][0].toBool());
    EXPECT_FALSE(window.isInfoViewShown());
    window.hide();

    VeilkeepWindow& next = world.show();
    EXPECT_EQ(next.geometry(), QRect(60, 70, 900, 640));
    EXPECT_FALSE(next.isInfoViewShown());
    next.toggleInfoView();
    EXPECT_TRUE(eventually([&] { return world.part<InfoPane>().width() == 251; }));
}

TEST(VeilkeepWindowTest, APlaceWhereNobodyReachesItIsRepaired) {
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    const QRect middle((area.width() - 900) / 2, (area.height() - 640) / 2, 900, 640);
    for (const char* const kept : {"5000 4000 900 640", "100 -300 900 640"}) {
        WindowWorld world;
        world.world.list.defaults.set(defaultsKey::windowGeometry, kept);
        world.world.list.defaults.set(defaultsKey::windowSplitter, "0 -7");
        EXPECT_EQ(world.show().geometry(), middle) << kept;
        EXPECT_EQ(world.part<GroupPanel>().width(), 235);
    }
}

TEST(VeilkeepWindowTest, MessagesComeAndGo) {
    ThreeItems world;
    VeilkeepWindow& window = world.show();
    const auto texts = [&] {
        QStringList all;
        for (const MessageBar* const bar : window.findChildren<MessageBar*>())
            if (bar->isVisible())
                all << bar->text();
        return all;
    };
    EXPECT_TRUE(texts().isEmpty());
    emit world.files().restores().ended(world.tree.root(), {WorkerError::Success, 2, 1});
    EXPECT_EQ(texts(), QStringList(QString("2 hidden items were found in %1. 1 folder could not be read.")
                                       .arg(QString::fromStdString(world.tree.root()))));
    emit world.files().restores().ended("/media/stick", {WorkerError::Success, 1, 0});
    EXPECT_EQ(texts(), QStringList("3 hidden items were found in 2 folders. 1 folder could not be read."));
    emit world.part<MessageBar>().dismissed();
    EXPECT_TRUE(eventually([&] { return texts().isEmpty(); }));
}

TEST(VeilkeepWindowTest, WhatCouldNotBeSavedIsToldUntilItIs) {
    ThreeItems world;
    const VeilkeepWindow& window = world.show();
    const std::string list = world.files().pathForDataFile();
    std::filesystem::create_directories(list + "/in the way");
    EXPECT_FALSE(world.files().saveDataToDisk());
    const auto* const bar = window.findChild<MessageBar*>();
    ASSERT_TRUE(bar);
    EXPECT_TRUE(bar->isVisible());
    EXPECT_TRUE(bar->text().startsWith("The list of items could not be saved: "))
        << bar->text().toStdString();
    std::filesystem::remove_all(list);
    EXPECT_TRUE(world.files().saveDataToDisk());
    EXPECT_TRUE(eventually([&] { return !window.findChild<MessageBar*>(); }));
}

TEST(VeilkeepWindowTest, ItemsThatStayedVisibleAreShown) {
    ThreeItems world;
    const ListedGroup group = world.world.autoHideGroup();
    const std::string stubborn = world.tree.makeFile("locked/item");
    world.world.add(stubborn, group);
    std::filesystem::create_directory_symlink("/", world.tree.path("locked/.SYS_INDEX")); // in the way
    VeilkeepWindow& window = world.show();
    world.files().filterController().setSearchText("nothing");
    EXPECT_FALSE(world.world.groups.makeAutoHide("test"));
    auto* const bar = window.findChild<MessageBar*>();
    ASSERT_TRUE(bar);
    EXPECT_EQ(bar->text(), "1 item could not be hidden automatically and is still visible.");
    ASSERT_TRUE(eventually([&] { return bar->isVisible() && bar->height() > 10; }));
    realInput::click(*buttonNamed(*bar, "Show"));
    ASSERT_TRUE(eventually([&] { return world.files().getAllSelectedFiles().size() == 1; }));
    EXPECT_EQ(world.files().firstSelectedFile()->path(), stubborn);
    EXPECT_TRUE(world.world.groups.leftVisible().empty());
    EXPECT_TRUE(eventually([&] { return !window.findChild<MessageBar*>(); }));
}

TEST(VeilkeepWindowTest, TheInfoPaneTellsWhatIsSelected) {
    ThreeItems world;
    world.tree.makeFile("folder/box/a");
    world.tree.makeFile("folder/box/b");
    world.world.list.add(world.tree.path("folder/box"));
    VeilkeepWindow& window = world.show();
    EXPECT_FALSE(window.findChild<InfoContents*>()); // made for the first selection

    const auto all = world.files().filesController().arrangedObjects();
    world.files().filesController().setSelectedObjects({all[3]});
    ASSERT_TRUE(eventually([&] { return window.findChild<InfoContents*>() != nullptr; }));
    const auto& info = world.part<InfoContents>();
    EXPECT_TRUE(eventually([&] { return info.value(InfoContents::Size) == "N/A for 2 items"; }));
    EXPECT_EQ(info.value(InfoContents::Where), QString::fromStdString(world.tree.path("folder")));
    EXPECT_NE(info.value(InfoContents::Modified), "Unknown");

    world.files().filesController().setSelectedObjects(all);
    EXPECT_TRUE(eventually([&] { return info.value(InfoContents::Group) == "Several"; }));
}

TEST(VeilkeepWindowTest, ItemsAreMovedToAnotherGroupByTheMenu) {
    ThreeItems world;
    const VeilkeepWindow& window = world.show();
    const auto all = world.files().filesController().arrangedObjects();
    world.files().filesController().setSelectedObjects({all[0], all[1]});
    QMenu* const groups = menuTitled(window, "Move to Group");
    ASSERT_TRUE(groups);
    emit groups->aboutToShow();
    ASSERT_EQ(groups->actions().size(), 3); // no header
    groups->actions().back()->trigger();
    EXPECT_EQ(all[0]->groupID(), world.world.row(3)->groupID());
    EXPECT_EQ(all[1]->groupID(), world.world.row(3)->groupID());
    EXPECT_EQ(all[2]->groupID(), world.world.row(2)->groupID());
}

} // namespace
} // namespace veilkeep::test
