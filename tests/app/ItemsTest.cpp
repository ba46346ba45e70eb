#include "tests/app/AppWorld.h"
#include "widgets/controls/OnOffSwitch.h"
#include "widgets/mainwindow/SummaryLine.h"

#include <gtest/gtest.h>

#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>

#include <cstdio>

namespace veilkeep::test {
namespace {

using Names = std::vector<std::string>;

class ItemsTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(world.start()); }

    AppWorld world;
};

// Another program's window, from which files are dragged.
class DragSource : public QWidget {
public:
    explicit DragSource(std::vector<std::string> paths) : m_paths(std::move(paths)) {
        setGeometry(1250, 850, 100, 100);
    }
    QPoint middle() const { return mapToGlobal(rect().center()); }

protected:
    void mousePressEvent(QMouseEvent* event) override { event->accept(); }
    void mouseMoveEvent(QMouseEvent*) override {
        auto* const dragged = new QMimeData;
        QList<QUrl> urls;
        for (const std::string& path : m_paths)
            urls << QUrl::fromLocalFile(QString::fromStdString(path));
        dragged->setUrls(urls);
        QDrag* const drag = new QDrag(this);
        drag->setMimeData(dragged);
        drag->exec(Qt::CopyAction | Qt::LinkAction | Qt::MoveAction, Qt::CopyAction);
    }

private:
    const std::vector<std::string> m_paths;
};

TEST_F(ItemsTest, FilesAreDroppedOntoTheTableAndOntoAGroup) {
    const std::string first = appScratch().makeFile("home/Docs/first & one"),
                      second = appScratch().makeFile("home/Docs/second");
    {
        DragSource source({first});
        ASSERT_TRUE(showAndActivate(source));
        realInput::drag(source.middle(),
                        world.table().viewport()->mapToGlobal(world.table().viewport()->rect().center()));
        EXPECT_TRUE(world.shows({"first & one"}));
    }
    DragSource source({second});
    ASSERT_TRUE(showAndActivate(source));
    realInput::drag(source.middle(),
                    world.groupList().viewport()->mapToGlobal(world.placeOfGroup("Private Files")));
    ASSERT_TRUE(eventually([&] { return world.files().ifAlreadyAddedFile(second); }));
    EXPECT_TRUE(eventually([&] {
        return world.files().findFileWithOriginalPath(second)->groupID() ==
               world.groups().groupForName("Private Files")->groupID();
    }));
    EXPECT_EQ(world.files().findFileWithOriginalPath(first)->groupID(), 0);
    EXPECT_TRUE(exists(first) && exists(second)) << "dropping moves nothing";
}

TEST_F(ItemsTest, WhatCannotBeAddedIsSaid) {
    const std::string path = world.addFile("letter");
    world.answer("An item could not be added.", "OK");
    world.app().openFiles({path});
    EXPECT_TRUE(world.areAllAnswered());
    EXPECT_EQ(world.files().files().size(), 1U);

    world.answer("The \"/usr/bin\" item is a protected system file or folder.", "OK");
    world.app().openFiles({"/usr/bin"});
    EXPECT_TRUE(world.areAllAnswered());
    EXPECT_TRUE(world.shows({"letter"}));
}

TEST_F(ItemsTest, EachWayHidesAndShows) {
    const std::string path = world.addFile("letter"), other = world.addFile("other");
    auto* const summary = world.window()->findChild<SummaryLine*>();
    const auto selectionSwitch = [&] { realInput::click(*summary->findChild<OnOffSwitch*>()); };
    const auto byContextMenu = [&](const char* title) {
        world.clickRow("letter", AppWorld::Part::Elsewhere, Qt::RightButton);
        EXPECT_TRUE(world.chooseInPopup(title));
    };
    const struct {
        const char* what;
        std::function<void()> hide, show;
    } ways[] = {
        {"row", [&] { world.clickRow("letter", AppWorld::Part::Switch); },
         [&] { world.clickRow("letter", AppWorld::Part::Switch); }},
        {"selection", [&] { world.clickRow("letter"), selectionSwitch(); }, selectionSwitch},
        {"keys", [&] { world.clickRow("letter"), realInput::key("Ctrl+Right"); },
         [&] { realInput::key("Ctrl+Left"); }},
        {"context menu", [&] { byContextMenu("Hide"); }, [&] { byContextMenu("Unhide"); }},
        {"menu bar",
         [&] {
             EXPECT_TRUE(world.choose({"Edit", "Hide"}));
         },
         [&] {
             EXPECT_TRUE(world.choose({"Edit", "Unhide"}));
         }},
    };
    for (const auto& way : ways) {
        SCOPED_TRACE(way.what);
        way.hide();
        ASSERT_TRUE(world.isHidden(path));
        EXPECT_TRUE(exists(other));
        way.show();
        ASSERT_TRUE(world.isShown(path));
    }
    EXPECT_EQ(readFile(path), "content");
}

TEST_F(ItemsTest, SeveralAtOnce) {
    const Names paths{world.addFile("a"), world.addFile("b"), world.addFile("c")};
    world.selectRows("a", 1);
    realInput::key("Ctrl+Right");
    EXPECT_TRUE(world.isHidden(paths[0]) && world.isHidden(paths[1]));
    EXPECT_TRUE(exists(paths[2]));
    world.selectRows("a", 2); // one of which is visible: the switch hides it first
    realInput::key("Ctrl+Left");
    for (const std::string& path : paths)
        EXPECT_TRUE(world.isShown(path));
    world.answer("Are you sure you want to remove selected items from list?", "Remove");
    realInput::key("Delete");
    EXPECT_TRUE(world.areAllAnswered());
    EXPECT_TRUE(world.shows({}));
    EXPECT_TRUE(exists(paths[1]));
}

TEST_F(ItemsTest, ABrokenItemLeadsToAQuestionAndThePanel) {
    const std::string path = world.addFile("letter");
    ASSERT_EQ(std::remove(path.c_str()), 0);
    EXPECT_TRUE(world.choose({"File", "Find Inconsistent Items"}));
    world.waitForBatch();
    realInput::key("Ctrl+4");
    ASSERT_TRUE(world.shows({"letter"}));
    world.answer("Previously visible file is broken.", "Cancel");
    world.clickRow("letter", AppWorld::Part::Switch);
    EXPECT_TRUE(world.areAllAnswered());
    EXPECT_TRUE(world.shows({"letter"}));

    world.answer("Previously visible file is broken.", "Locate File...");
    world.whenOpen("Locate Item", [](QWidget&) { realInput::key("Escape"); });
    world.clickRow("letter", AppWorld::Part::Switch);
    EXPECT_TRUE(world.areAllAnswered());
    EXPECT_TRUE(world.shows({"letter"}));
}

} // namespace
} // namespace veilkeep::test
