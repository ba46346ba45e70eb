#include "tests/app/AppWorld.h"
#include "widgets/dialogs/FolderModel.h"

#include <gtest/gtest.h>

#include <QListView>

#include <cstdio>
#include <optional>

namespace veilkeep::test {
namespace {

class ItemsTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(world.start()); }

    AppWorld world;
};

// In the panel that is open: a double click enters a folder.
void clickName(QWidget& panel, const std::string& name, bool twice = false) {
    QListView* list = nullptr;
    std::optional<int> row;
    EXPECT_TRUE(eventually([&] {
        for (QListView* const each : panel.findChildren<QListView*>())
            if (const auto* const model = dynamic_cast<FolderModel*>(each->model());
                model && model->rowOf(name)) {
                list = each;
                row = model->rowOf(name);
            }
        return list != nullptr;
    })) << name;
    if (!list)
        return;
    const QRect place = list->visualRect(list->model()->index(*row, 0));
    const QPoint at(place.left() + 30, place.center().y());
    twice ? realInput::doubleClick(*list->viewport(), at) : realInput::click(*list->viewport(), at);
}

TEST_F(ItemsTest, FilesAndFoldersAreAddedByThePanel) {
    const std::string file = appScratch().makeFile("home/Docs/letter"),
                      folder = appScratch().makeDirectory("home/Docs/pictures");
    world.whenOpen("Add Items", [](QWidget& panel) {
        clickName(panel, "Docs", true);
        clickName(panel, "letter");
        realInput::key("Shift+Up");
        EXPECT_TRUE(AppWorld::clickButton(panel, "Add"));
    });
    ASSERT_TRUE(world.clickTool(Command::AddFiles));
    EXPECT_TRUE(world.areAllAnswered());
    EXPECT_TRUE(eventually(
        [&] { return world.files().ifAlreadyAddedFile(file) && world.files().ifAlreadyAddedFile(folder); }));
    EXPECT_EQ(world.files().files().size(), 2U);
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

// Whatever the list shows at the moment, and whether they are listed already.
TEST_F(ItemsTest, ItemsThatAreToBeShownAreSelected) {
    const std::string hidden = world.addFile("hidden"),
                      visible = world.addFileToGroup("visible", "Private Files");
    world.addFile("other");
    ASSERT_TRUE(world.files().hideFiles({world.files().findFileWithPath(hidden)}, false));
    ASSERT_TRUE(world.isHidden(hidden));
    world.clickGroup("Private Files");
    const std::string fresh = appScratch().makeFile("home/Docs/fresh");
    const auto selected = [this] {
        std::vector<std::string> paths;
        for (const ListedFile& file : world.files().getAllSelectedFiles())
            paths.emplace_back(file->path());
        return paths;
    };
    OpenRequest request{{hidden, visible + "/", fresh}, {}, true};
    world.app().showItems(request);
    const std::vector<std::string> wanted{AppWorld::hiddenPathOf(hidden), visible, fresh};
    EXPECT_TRUE(eventually([&] { return selected() == wanted; }));
    EXPECT_TRUE(world.isHiddenOnDisk(hidden));

    world.parts().list.window().hideWindow();
    world.groups().setAutoUnhideHappened(false);
    request.paths = {wanted[0]}; // as file managers see it
    request.links = {"smb://host/item"};
    world.answer("Only files and folders of this computer can be shown.", "OK");
    world.app().showItems(request);
    EXPECT_TRUE(world.areAllAnswered());
    EXPECT_TRUE(eventually([&] { return world.groups().autoUnhideHappened(); }));
    EXPECT_TRUE(eventually([&] { return selected() == std::vector{wanted[0]}; }));
}

TEST_F(ItemsTest, KeysAndMenuOfTheWindowHideAndShow) {
    const std::string path = world.addFile("letter"), other = world.addFile("other");
    const struct {
        const char* what;
        std::function<void()> hide, show;
    } ways[] = {
        {"keys", [&] { world.clickRow("letter"), realInput::key("Ctrl+Right"); },
         [&] { realInput::key("Ctrl+Left"); }},
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

TEST_F(ItemsTest, KeysArriveAfterEachDialog) {
    const std::string path = world.addFile("a");
    world.addFile("b");
    ASSERT_EQ(std::remove(path.c_str()), 0);
    world.files().performSanityCheckOfAll();
    const char* const asked = "Are you sure you want to remove selected items from list?";
    const auto escape = [](QWidget&) { realInput::key("Escape"); };
    const struct {
        const char* what;
        std::function<void()> open;
    } rows[] = {
        {"progress",
         [&] {
             EXPECT_TRUE(world.choose({"File", "Find Inconsistent Items"}));
         }},
        {"alert", [&] { world.answer(asked, "Cancel"), realInput::key("Delete"); }},
        {"alert and Escape", [&] { world.whenOpen(asked, escape), realInput::key("Delete"); }},
        {"panel", [&] { world.whenOpen("Add Items", escape), realInput::key("Ctrl+O"); }},
        {"panel from an alert",
         [&] {
             world.answer("Previously visible file is broken.", "Locate File...");
             world.whenOpen("Locate Item", escape);
             world.clickRow("a", AppWorld::Part::Switch);
         }},
    };
    world.clickRow("b");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        row.open();
        EXPECT_TRUE(world.areAllAnswered());
        world.expectKeysToArrive();
    }
}

TEST_F(ItemsTest, ABrokenItemLeadsToAQuestionAndThePanel) {
    const std::string path = world.addFile("letter");
    ASSERT_EQ(std::remove(path.c_str()), 0);
    EXPECT_TRUE(world.choose({"File", "Find Inconsistent Items"}));
    world.waitForBatch();
    realInput::key("Ctrl+4");
    ASSERT_TRUE(world.shows({"letter"}));
    const std::string found = appScratch().makeFile("home/Docs/another");
    world.answer("Previously visible file is broken.", "Locate File...");
    world.whenOpen("Locate Item", [](QWidget& panel) {
        clickName(panel, "another");
        EXPECT_TRUE(AppWorld::clickButton(panel, "Choose"));
    });
    world.clickRow("letter", AppWorld::Part::Switch);
    EXPECT_TRUE(world.areAllAnswered());
    realInput::key("Ctrl+1");
    EXPECT_TRUE(world.shows({"another"}));
    EXPECT_TRUE(world.files().ifAlreadyAddedFile(found));
}

} // namespace
} // namespace veilkeep::test
