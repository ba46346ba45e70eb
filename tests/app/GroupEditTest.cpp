// The sheet in which a group is edited, with the panel in which an image is chosen.

#include "tests/app/AppWorld.h"
#include "tests/app/EveryWindow.h"
#include "tests/support/gui/DragSource.h"
#include "widgets/dialogs/ItemPanel.h"
#include "widgets/groupedit/GroupEditSheet.h"
#include "widgets/groupedit/ImageWell.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

namespace veilkeep::test {
namespace {

constexpr const char* own = "Private Files";

class GroupEditTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(world.start());
        picture = appScratch().makeFile("home/Pictures/hills.png", drawnPicture(1));
        appScratch().makeFile("home/Pictures/torn.png", drawnPicture(2).substr(0, 300));
        group = world.groups().groupForName(own);
        world.clickGroup(own);
    }

    GroupEditSheet& sheet() { return dynamic_cast<GroupEditSheet&>(*world.openDialog("Edit Group")); }
    bool click(const QString& button) { return AppWorld::clickButton(sheet(), button); }
    bool tells(const QString& part) { return AppWorld::says(sheet(), part); }
    QImage shownIcon() { return sheet().groupIcon().grab().toImage(); }

    // What is done in the sheet, which Ctrl+E opens; it is closed then.
    void edit(std::function<void()> steps) {
        world.whenOpen("Edit Group", [steps = std::move(steps)](QWidget&) { steps(); });
        realInput::key("Ctrl+E");
        EXPECT_TRUE(world.areAllAnswered());
        EXPECT_TRUE(eventually([this] { return !world.openDialog("Edit Group") && world.isAtRest(); }));
        EXPECT_TRUE(eventually([this] { return world.window()->isActiveWindow(); }));
    }
    // In the panel on the sheet.
    void chooseFile(const std::string& path) {
        world.whenOpen("Choose Image", [path](QWidget& window) {
            auto& panel = dynamic_cast<ItemPanel&>(window);
            panel.startAt(path);
            EXPECT_TRUE(eventually([&] { return panel.chosen() == std::vector{path}; })) << path;
            EXPECT_TRUE(AppWorld::clickButton(panel, "Choose"));
        });
        EXPECT_TRUE(click("Choose Image…"));
        EXPECT_TRUE(eventually([this] { return !world.openDialog("Choose Image"); }));
        settle();
    }
    void pick(int item) { // in the list of icons
        realInput::key("Alt+I");
        realInput::key("Home");
        for (int step = 0; step < item; ++step)
            realInput::key("Down");
    }

    AppWorld world;
    ListedGroup group;
    std::string picture;
};

TEST_F(GroupEditTest, AllOfItByKeys) {
    edit([this] {
        realInput::key("Delete");
        realInput::key("Return");
        EXPECT_TRUE(tells("needs a name"));
        realInput::type("Trip");
        pick(9);
        realInput::key("Alt+A");
        EXPECT_TRUE(eventually([this] { return sheet().autoHideBox().isChecked(); }));
        realInput::key("Return");
    });
    EXPECT_EQ(group->name(), "Trip");
    EXPECT_EQ(group->iconPath(), "folder_games");
    EXPECT_EQ(group->autoHide(), true);
    edit([this] {
        realInput::type("x");
        pick(2);
        realInput::key("Alt+R");
        EXPECT_TRUE(eventually([this] { return sheet().groupNameField().text() == "Trip"; }));
        EXPECT_EQ(sheet().popUpGroupIcons().currentIndex(), 9);
        realInput::key("Return");
    });
    EXPECT_EQ(group->iconPath(), "folder_games");
}

TEST_F(GroupEditTest, AnImageFileWinsOverTheList) {
    const std::string torn = appScratch().path("home/Pictures/torn.png");
    edit([&] {
        const QImage before = shownIcon();
        chooseFile(torn);
        EXPECT_TRUE(tells("torn.png"));
        EXPECT_EQ(shownIcon(), before);
        chooseFile(picture);
        const QImage ofFile = shownIcon();
        EXPECT_NE(ofFile, before);
        pick(2);
        EXPECT_NE(shownIcon(), ofFile);
        EXPECT_TRUE(click("OK"));
    });
    EXPECT_EQ(group->iconPath(), picture);
    EXPECT_EQ(QImage::fromData(QByteArray::fromStdString(std::string(group->iconData()))).size(),
              QSize(42, 42));
}

TEST_F(GroupEditTest, AnImageThatIsDroppedIsKept) {
    const std::string bytes = drawnPicture(3);
    const struct {
        const char* what;
        std::function<void(QMimeData&)> fill;
        Qt::DropAction taken;
        bool isTold;
    } rows[] = {
        {"two files",
         [&](QMimeData& data) {
             data.setUrls({QUrl::fromLocalFile(QString::fromStdString(picture)), QUrl("file:///x.png")});
         },
         Qt::IgnoreAction, false},
        {"text", [](QMimeData& data) { data.setText("x"); }, Qt::IgnoreAction, false},
        {"no image", [](QMimeData& data) { data.setData("image/png", "torn"); }, Qt::CopyAction, true},
        {"an image", [&](QMimeData& data) { data.setData("image/png", QByteArray::fromStdString(bytes)); },
         Qt::CopyAction, false},
    };
    edit([&] {
        for (const auto& row : rows) {
            const QPoint well = sheet().groupIcon().mapToGlobal(QPoint(20, 20));
            DragSource source(row.fill);
            source.move(20, 20);
            EXPECT_EQ(dragTo(well, std::move(source)), row.taken) << row.what;
            settle();
            EXPECT_EQ(tells("no image that can be read"), row.isTold) << row.what;
        }
        EXPECT_TRUE(click("OK"));
    });
    EXPECT_EQ(group->iconPath(), appScratch().path("home/.local/share/Veilkeep/Icons/Icon.png"));
    EXPECT_FALSE(group->iconData().empty());
}

} // namespace
} // namespace veilkeep::test
