#include "tests/support/gui/DragSource.h"
#include "tests/widgets/filetable/TableWorld.h"
#include "widgets/controls/DragMime.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>

namespace veilkeep {
namespace {

using namespace veilkeep::test;
using Part = RowLayout::Part;

class FilesTableViewTest : public ::testing::Test {
protected:
    void show() {
        view.resize(640, 420);
        view.move(20, 20);
        ASSERT_TRUE(showAndActivate(view));
        view.setFocus();
        settle();
    }
    QPoint placeOf(int row, Part part) const {
        const RowLayout layout = view.rowLayout(row);
        return part == Part::Elsewhere ? layout.name.center() : layout.rectOf(part).center();
    }
    void click(int row, Part part, Qt::MouseButton button = Qt::LeftButton) {
        realInput::click(*view.viewport(), placeOf(row, part), button);
    }
    void follow() {
        view.filesModel().update();
        settle();
    }
    QMenu* menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    QAction* entry(const QString& title) {
        for (QAction* action : menu()->actions())
            if (action->text() == title)
                return action;
        return nullptr;
    }

    TableWorld world;
    FilesTableView view{world.list, world.actions, world.previews};
};

TEST_F(FilesTableViewTest, TheSwitchOfARowMovesItsItemAlone) {
    const ListedFile first = world.add("first"), second = world.add("second");
    const std::string place(second->path());
    show();
    world.shown.setSelectedObjects({first});
    click(1, Part::Switch);
    EXPECT_EQ(second->state(), File::Hidden);
    EXPECT_FALSE(exists(place));
    EXPECT_EQ(first->state(), File::Visible);
    EXPECT_EQ(world.shown.selectedObjects(), std::vector<ListedFile>{first});
    click(1, Part::Switch);
    EXPECT_TRUE(exists(place));

    // Left before its release it does nothing.
    realInput::moveTo(view.viewport()->mapToGlobal(placeOf(1, Part::Switch)));
    realInput::press();
    realInput::moveTo(view.viewport()->mapToGlobal(placeOf(1, Part::Elsewhere)));
    realInput::release();
    EXPECT_EQ(second->state(), File::Visible);
}

TEST_F(FilesTableViewTest, SizesAreShownWhole) {
    for (const std::uint64_t size : {1u, 5000u, 11000u, 17000u, 512000u, 1100000u, 2511000u, 117000000u})
        world.list.files().append(listedOnly(std::to_string(size), File::Visible, size));
    show();
    for (const double points : {8.0, 9.3, 13.1, 20.0}) {
        QFont font = view.font();
        font.setPointSizeF(points);
        view.setFont(font);
        for (int row = 0; row < view.filesModel().rowCount(); ++row) {
            const QString text = view.filesModel().sizeText(*view.filesModel().fileAt(row));
            const int width = view.rowLayout(row).size.width();
            EXPECT_EQ(QFontMetrics(font).elidedText(text, Qt::ElideMiddle, width), text) << points;
        }
    }
}

TEST_F(FilesTableViewTest, HiddenItemsAreNotRevealed) {
    for (const std::int32_t state : {File::Visible, File::Hidden, File::Broken})
        world.list.files().append(listedOnly("s" + std::to_string(state), state));
    show();
    for (int row = 0; row < 3; ++row)
        click(row, Part::Reveal);
    EXPECT_EQ(world.viewer.revealed, (std::vector<std::string>{"/h/s0", "/h/s-1"}));
}

TEST_F(FilesTableViewTest, OtherKeysGoWhereTheyBelong) {
    for (const char* name : {"apple", "banana", "blue berry", "cherry"})
        world.list.files().append(listedOnly(name));
    show();
    QSignalSpy left(&view, &FilesTableView::leftKeyPressed);
    QSignalSpy quickLook(&view, &FilesTableView::quickLookRequested);
    realInput::type("bl");
    EXPECT_EQ(world.shown.selectedObjects(), std::vector<ListedFile>{world.at(2)});
    realInput::key("Home");
    EXPECT_EQ(world.shown.selectedObjects(), std::vector<ListedFile>{world.at(0)});
    realInput::key("Space");
    EXPECT_EQ(quickLook.size(), 1);
    world.world.presenter.expect({.title = "“apple” could not be opened.", .answer = "OK"});
    realInput::key("Return");
    realInput::key("Left");
    EXPECT_EQ(left.size(), 1);
    EXPECT_EQ(world.shown.selectedCount(), 0u);
}

// Ctrl+2 and Ctrl+A at once: all that was selected leaves while the new selection waits to be followed.
TEST_F(FilesTableViewTest, ASelectionIsKeptThatIsSetBeforeTheRowsChange) {
    for (const std::int32_t state : {File::Visible, File::Hidden, File::Visible, File::Hidden, File::Hidden})
        world.list.files().append(listedOnly("x", state));
    follow();
    world.shown.setSelectedObjects({world.at(0)});
    follow();
    world.list.filterController().setShowOnlyHidden(true);
    world.shown.setSelectedObjects(world.shown.arrangedObjects());
    follow();
    EXPECT_EQ(world.shown.selectedCount(), 3U);
    EXPECT_EQ(view.selectionModel()->selectedRows().size(), 3);
}

TEST_F(FilesTableViewTest, ACurrentRowThatIsSeenStaysSoThroughAFilter) {
    for (int number = 0; number < 1000; ++number)
        world.list.files().append(listedOnly(std::to_string(number)));
    show();
    const auto isCurrentSeen = [&] {
        return view.currentIndex().row() >= 0 &&
               view.filesModel().fileAt(view.currentIndex().row()) == world.at(979) &&
               view.viewport()->rect().contains(view.visualRect(view.currentIndex()));
    };
    for (const char* text : {"7", "97", "979"}) { // many runs of rows, some, one row
        follow();
        view.setCurrentIndex(view.filesModel().index(979, 0));
        settle();
        for (const char* const search : {text, ""}) {
            world.list.filterController().setSearchText(search);
            follow();
            EXPECT_TRUE(isCurrentSeen()) << text << " " << search;
        }
        view.setCurrentIndex(view.filesModel().index(0, 0));
    }
}

TEST_F(FilesTableViewTest, TheContextMenuActsOnTheRowUnderIt) {
    const ListedFile first = world.add("first"), second = world.add("second");
    show();
    world.shown.setSelectedObjects({first});
    settle();
    click(1, Part::Elsewhere, Qt::RightButton);
    ASSERT_TRUE(eventually([&] { return menu() != nullptr; }));
    EXPECT_EQ(world.shown.selectedObjects(), std::vector<ListedFile>{second});
    QSignalSpy other(&view, &FilesTableView::chooseApplicationRequested);
    emit entry("Open With")->menu()->aboutToShow();
    entry("Open With")->menu()->actions().back()->trigger();
    EXPECT_EQ(other.size(), 1);
    entry("Hide")->trigger();
    EXPECT_EQ(second->state(), File::Hidden);
    menu()->close();
    settle();

    realInput::key("Menu"); // at the current row
    ASSERT_TRUE(eventually([&] { return menu() != nullptr; }));
    EXPECT_NE(entry("Unhide"), nullptr);
    EXPECT_FALSE(entry("Open")->isEnabled() || entry("Open With")->isEnabled() ||
                 entry("Show in File Manager")->isEnabled());
    menu()->close();
}

TEST_F(FilesTableViewTest, TheMenuOfAGroupTakesOutOfIt) {
    world.list.files().append(listedOnly("gone", File::Broken));
    world.group.chosen = 3;
    world.list.moveFiles(std::vector{world.at(0)}, 3);
    view.setGroupName([] { return QStringLiteral("Secret"); });
    show();
    click(0, Part::Elsewhere, Qt::RightButton);
    ASSERT_TRUE(eventually([&] { return menu() != nullptr; }));
    world.world.presenter.expect({.title = "Previously visible file is broken.", .answer = "Cancel"});
    entry("Fix…")->trigger();
    entry("Remove From Group")->trigger();
    EXPECT_EQ(world.at(0)->groupID(), 0);
    menu()->close();
}

class DropTarget : public QWidget {
public:
    DropTarget() { setAcceptDrops(true); }
    void dragEnterEvent(QDragEnterEvent* event) override {
        actions = event->possibleActions();
        event->acceptProposedAction();
    }
    void dropEvent(QDropEvent* event) override {
        rowPaths = dragMime::paths(*event->mimeData());
        fileNames = dragMime::fileNames(*event->mimeData());
        event->acceptProposedAction();
    }
    Qt::DropActions actions;
    std::optional<std::vector<std::string>> rowPaths, fileNames;
};

TEST_F(FilesTableViewTest, DraggedRowsCarryTheirPathsAndTheVisibleFiles) {
    for (const std::int32_t state : {File::Visible, File::Hidden})
        world.list.files().append(listedOnly("s" + std::to_string(state) + "\xFF", state));
    DropTarget target;
    target.setGeometry(800, 20, 300, 300);
    ASSERT_TRUE(showAndActivate(target));
    show();
    realInput::key("Ctrl+A");
    realInput::drag(view.viewport()->mapToGlobal(placeOf(1, Part::Elsewhere)),
                    target.mapToGlobal(QPoint(150, 150)));
    ASSERT_TRUE(eventually([&] { return target.rowPaths.has_value(); }));
    EXPECT_EQ(*target.rowPaths, (std::vector<std::string>{"/h/s0\xFF", "/h/s1\xFF"}));
    EXPECT_EQ(target.fileNames, std::vector<std::string>{"/h/s0\xFF"});
    EXPECT_EQ(target.actions, Qt::CopyAction);
    EXPECT_EQ(world.list.files().size(), 2u);
}

TEST_F(FilesTableViewTest, DroppedFilesAreAddedAndOwnRowsMoved) {
    const ListedFile known = world.add("known");
    const std::string path = world.tree.makeFile("items/new");
    world.group.chosen = 3;
    view.resize(640, 420);
    const auto drop = [&](QMimeData& data) {
        QDragEnterEvent enter({20, 20}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(view.viewport(), &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent dropped({20, 20}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(view.viewport(), &dropped);
        return dropped.isAccepted() && dropped.dropAction() == Qt::CopyAction;
    };
    QMimeData text;
    text.setText("text");
    EXPECT_FALSE(drop(text));
    QMimeData rows; // another program's
    dragMime::setPaths(rows, {std::string(known->path())});
    EXPECT_FALSE(drop(rows));
    QMimeData files;
    dragMime::setPaths(files, {std::string(known->path())});
    dragMime::setFileNames(files, {path});
    EXPECT_TRUE(drop(files));
    ASSERT_TRUE(eventually([&] { return !world.list.isAdding(); }));
    EXPECT_EQ(world.list.findFileWithPath(path)->groupID(), 3);
    EXPECT_EQ(known->groupID(), 0);
    show();
    const auto fill = [&](QMimeData& data) { dragMime::setPaths(data, {std::string(known->path())}); };
    EXPECT_EQ(dragTo(view.viewport()->mapToGlobal(QPoint(200, 200)), DragSource(fill)), Qt::CopyAction);
    EXPECT_EQ(known->groupID(), 3);
}

TEST_F(FilesTableViewTest, AnEmptyTableSaysWhyAndHelps) {
    show();
    const auto button = [&] { return view.findChild<QPushButton*>(); };
    ASSERT_TRUE(button() && button()->isVisible());
    QSignalSpy adding(&view, &FilesTableView::addRequested);
    realInput::click(*button());
    EXPECT_EQ(adding.size(), 1);

    world.list.files().append(listedOnly("a"));
    FilterController& filter = world.list.filterController();
    filter.setSearchText("x");
    follow();
    realInput::click(*button());
    EXPECT_EQ(filter.searchText(), "");
    filter.setShowOnlyHidden(true);
    follow();
    realInput::click(*button());
    EXPECT_TRUE(filter.showAll());
    follow();
    EXPECT_FALSE(button()->isVisible());
}

} // namespace
} // namespace veilkeep
