// Progress of batches, whose workers wait until the test lets them go on.

#include "tests/app/AppWorld.h"

#include <gtest/gtest.h>

#include <QProgressBar>
#include <QScreen>
#include <QWindow>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

namespace veilkeep::test {
namespace {

constexpr int items = 60;
constexpr const char* hiding = "Hiding of files started. Please wait...";

// Where workers wait (held_worker.cpp): all of a batch but the first.
class Gate {
public:
    Gate() {
        EXPECT_EQ(::mkfifo(m_path.c_str(), 0600), 0);
        ::setenv("VEILKEEP_TEST_GATE", m_path.c_str(), 1);
        m_pipe.reset(::open(m_path.c_str(), O_RDWR | O_CLOEXEC));
    }
    ~Gate() { ::unlink(m_path.c_str()); }
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;
    void letThrough(int workers) {
        const std::string bytes(static_cast<std::size_t>(workers), 'x');
        EXPECT_EQ(::write(m_pipe.get(), bytes.data(), bytes.size()), workers);
    }

private:
    const std::string m_path = appScratch().path("gate");
    UniqueFd m_pipe;
};

TEST(ProgressTest, OfABatchIsPaintedWhileTheListTakesNoInput) {
    AppWorld world;
    Gate gate;
    ASSERT_TRUE(world.start());
    std::vector<std::string> paths;
    for (int number = 0; number < items; ++number)
        paths.push_back(appScratch().makeFile("home/Docs/" + std::to_string(100 + number)));
    world.files().addFiles(paths);
    world.files().waitForAdding();
    world.clickRow("100");
    realInput::key("Ctrl+A");
    const auto onScreen = [&] {
        const QWidget& sheet = *world.openDialog(hiding);
        return sheet.screen()->grabWindow(sheet.winId()).toImage();
    };
    QImage before;
    world.when(
        "the sheet",
        [&] {
            const QWidget* const sheet = world.openDialog(hiding);
            return sheet && sheet->windowHandle()->isExposed() && AppWorld::says(*sheet, "1 of 60");
        },
        [&] {
            QWidget& sheet = *world.openDialog(hiding);
            EXPECT_TRUE(AppWorld::says(sheet, "File: " + QString::fromStdString(paths[1])));
            EXPECT_FALSE(AppWorld::clickButton(sheet, "Cancel")) << "a batch is never left half done";
            before = onScreen();
            const realInput::WhileBusy busy;
            world.clickRow("100", AppWorld::Part::Switch);
            realInput::key("Ctrl+Q");
            world.app().perform(Command::AddFiles); // as from the panel's icon: it waits
            gate.letThrough(30);
        });
    world.when(
        "its next picture",
        [&] { // two workers wait at a time, and the last byte may be either's
            const QWidget* const sheet = world.openDialog(hiding);
            return sheet && sheet->findChild<QProgressBar*>()->value() >= 30 && onScreen() != before;
        },
        [&] {
            const realInput::WhileBusy busy;
            realInput::key("Escape");
            gate.letThrough(items);
        });
    world.whenOpen("Add Items", [&](QWidget&) {
        EXPECT_TRUE(world.isHiddenOnDisk(paths.back()));
        realInput::key("Escape");
    });
    realInput::key("Ctrl+Right");
    EXPECT_TRUE(world.areAllAnswered());
    world.expectKeysToArrive();
    EXPECT_FALSE(world.openDialog(hiding));
    for (const std::string& path : paths)
        EXPECT_TRUE(world.isHiddenOnDisk(path)) << path;
    world.clickRow("100", AppWorld::Part::Switch);
    EXPECT_TRUE(world.isShown(paths[0]));
}

} // namespace
} // namespace veilkeep::test
