// Files that are dragged from one program's window to another's.

#include "core/base/FileUri.h"
#include "tests/app/AppWorld.h"
#include "tests/support/BackgroundProgram.h"

#include "widgets/groupedit/ImageWell.h"

#include <gtest/gtest.h>

#include <QBuffer>

namespace veilkeep::test {
namespace {

class Peer {
public:
    static constexpr QPoint middle{1300, 900};

    explicit Peer(const std::vector<std::string>& files = {}) : m_program(command(files)) {
        EXPECT_TRUE(eventually([this] { return tells("shown\n"); }));
    }
    bool tells(const std::string& text) const {
        return exists(log()) && readFile(log()).find(text) != std::string::npos;
    }

private:
    static std::string log() { return appScratch().path("peer.log"); }
    static std::vector<std::string> command(const std::vector<std::string>& files) {
        writeFile(log(), "");
        std::vector<std::string> all{DRAG_PEER, log()};
        all.insert(all.end(), files.begin(), files.end());
        return all;
    }

    BackgroundProgram m_program;
};

std::string redPicture() {
    QImage image(60, 60, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    EXPECT_TRUE(image.save(&buffer, "PNG"));
    return bytes.toStdString();
}

class DragTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(world.start()); }

    AppWorld world;
};

TEST_F(DragTest, FilesAreDroppedOntoTheTableAndOntoAGroup) {
    QWidget &table = *world.table().viewport(), &groups = *world.groupList().viewport();
    const struct {
        const char* name;
        QPoint place;
        const char* group;
    } rows[] = {{"first & one", table.mapToGlobal(table.rect().center()), "All Files"},
                {"second", groups.mapToGlobal(world.placeOfGroup("Private Files")), "Private Files"}};
    for (const auto& row : rows) {
        const std::string path = appScratch().makeFile(std::string("home/Docs/") + row.name);
        const Peer peer({path});
        realInput::drag(Peer::middle, row.place, [&] { return peer.tells("taken\n"); });
        EXPECT_TRUE(eventually([&] { return peer.tells("done 1\n"); })) << "copied";
        ASSERT_TRUE(eventually([&] { return world.files().ifAlreadyAddedFile(path); })) << path;
        EXPECT_TRUE(eventually([&] {
            return world.files().findFileWithOriginalPath(path)->groupID() ==
                   world.groups().groupForName(row.group)->groupID();
        })) << row.group;
        EXPECT_TRUE(exists(path));
    }
}

TEST_F(DragTest, AnImageFileIsDroppedOntoTheIconOfAGroup) {
    const std::string picture = appScratch().makeFile("home/Docs/red.png", redPicture());
    world.clickGroup("Private Files");
    const Peer peer({picture});
    world.whenOpen("Edit Group", [&](QWidget& sheet) {
        auto* const well = sheet.findChild<ImageWell*>();
        ASSERT_TRUE(well);
        realInput::drag(Peer::middle, well->mapToGlobal(well->rect().center()),
                        [&] { return peer.tells("taken\n"); });
        EXPECT_TRUE(eventually([&] { return peer.tells("done 1\n"); })) << "copied";
        EXPECT_TRUE(eventually([&] { return world.parts().groupEdit.newIconPath() == picture; }));
        EXPECT_EQ(well->grab().toImage().pixelColor(well->rect().center()), QColor(Qt::red));
        EXPECT_TRUE(AppWorld::clickButton(sheet, "OK"));
    });
    realInput::key("Ctrl+E");
    EXPECT_TRUE(world.areAllAnswered());
    EXPECT_TRUE(
        eventually([&] { return world.groups().groupForName("Private Files")->iconPath() == picture; }));
}

TEST_F(DragTest, RowsAreDraggedOutAsCopiesOfWhatIsVisible) {
    const std::string hidden = world.addFile("a"), visible = world.addFile("b & one");
    world.clickRow("a", AppWorld::Part::Switch);
    ASSERT_TRUE(world.isHidden(hidden));
    const Peer peer;
    world.selectRows("a", 1);
    realInput::drag(world.table().viewport()->mapToGlobal(world.placeOf("b & one")), Peer::middle, [&] {
        const QCursor* const shape = QApplication::overrideCursor();
        return peer.tells("taken\n") && shape && shape->shape() == Qt::DragCopyCursor;
    });
    EXPECT_TRUE(
        eventually([&] { return peer.tells("offered 1\n" + fileUri(visible, UriSpelling::Qt) + "\r\n\n"); }));
    EXPECT_TRUE(exists(visible) && world.isHiddenOnDisk(hidden));
    EXPECT_TRUE(world.shows({"a", "b & one"}));
}

} // namespace
} // namespace veilkeep::test
