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

TEST_F(ItemsTest, WhatCannotBeAddedIsSaid) {
    const std::string path = world.addFile("letter");
    world.answer("An item could not be added.", "OK");
    world.app().openFiles({path});
    EXPECT_TRUE(world.areAllAnswered());
    EXPECT_EQ(world.files().files().size(), 1U);
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
    const std::string path = world.addFileToGroup("letter", "Private Files"), other = world.addFile("other");
    const auto press = [](const char* key) { return [key] { realInput::key(key); }; };
    const auto choose = [this](const char* menu, const char* entry) {
        return [=, this] { EXPECT_TRUE(world.choose({menu, entry})); };
    };
    const struct {
        const char* what;
        std::function<void()> hide, show;
    } ways[] = {
        {"keys of groups", press("Ctrl+Shift+Right"), press("Ctrl+Shift+Left")},
        {"menu of groups", choose("Groups", "Hide Group"), choose("Groups", "Unhide Group")},
        {"keys", [&] { world.clickRow("letter"), realInput::key("Ctrl+Right"); }, press("Ctrl+Left")},
        {"menu", choose("Edit", "Hide"), choose("Edit", "Unhide")},
    };
    world.clickGroup("Private Files");
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

TEST_F(ItemsTest, SortByTheMenu) {
    world.addFile("bee", "1");
    world.addFile("ant", "333");
    world.addFile("cow", "22");
    const std::pair<const char*, std::vector<std::string>> rows[] = {
        {"Name", {"ant", "bee", "cow"}},
        {"Size", {"bee", "cow", "ant"}},
        {"Size", {"ant", "cow", "bee"}}}; // once more turns it round
    for (const auto& [key, order] : rows) {
        ASSERT_TRUE(world.choose({"View", "Sort By", key}));
        EXPECT_TRUE(world.shows(order)) << key;
    }
}

TEST_F(ItemsTest, EachDialogDoesItsWorkAndKeysArriveAfterwards) {
    const std::string path = world.addFile("a");
    world.addFile("b");
    ASSERT_EQ(std::remove(path.c_str()), 0);
    const std::string file = appScratch().makeFile("home/Docs/agenda"),
                      folder = appScratch().makeDirectory("home/Docs/pictures"),
                      found = appScratch().makeFile("home/Docs/found");
    const char* const asked = "Are you sure you want to remove selected items from list?";
    const struct {
        const char* what;
        std::function<void()> open;
        std::function<bool()> isDone = [] { return true; };
    } rows[] = {
        {"progress",
         [&] {
             EXPECT_TRUE(world.choose({"File", "Find Inconsistent Items"}));
             world.waitForBatch();
         },
         [&] { return world.files().findFileWithOriginalPath(path)->state() == File::Broken; }},
        {"alert", [&] { world.answer(asked, "Cancel"), realInput::key("Delete"); }},
        {"alert and Escape",
         [&] {
             world.whenOpen(asked, [](QWidget&) { realInput::key("Escape"); });
             realInput::key("Delete");
         }},
        {"panel",
         [&] {
             world.whenOpen("Add Items", [](QWidget& panel) {
                 clickName(panel, "Docs", true);
                 clickName(panel, "agenda");
                 realInput::key("Shift+Up");
                 EXPECT_TRUE(AppWorld::clickButton(panel, "Add"));
             });
             EXPECT_TRUE(world.clickTool(Command::AddFiles));
         },
         [&] { return world.files().ifAlreadyAddedFile(file) && world.files().ifAlreadyAddedFile(folder); }},
        {"panel from an alert",
         [&] {
             world.answer("Previously visible file is broken.", "Locate File...");
             world.whenOpen("Locate Item", [](QWidget& panel) {
                 clickName(panel, "found");
                 EXPECT_TRUE(AppWorld::clickButton(panel, "Choose"));
             });
             world.clickRow("a", AppWorld::Part::Switch);
         },
         [&] { return world.files().ifAlreadyAddedFile(found) && world.rowOf("found") >= 0; }},
    };
    world.clickRow("b");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        row.open();
        EXPECT_TRUE(world.areAllAnswered());
        EXPECT_TRUE(eventually(row.isDone));
        world.expectKeysToArrive();
    }
    EXPECT_EQ(world.files().files().size(), 4U);
}

} // namespace
} // namespace veilkeep::test
