// Progress of batches, whose workers wait until the test lets them go on.

#include "tests/app/AppWorld.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QProgressBar>
#include <QScreen>
#include <QWindow>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
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

class ProgressTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(world.start());
        for (int number = 0; number < items; ++number)
            paths.push_back(appScratch().path("home/Docs/" + std::to_string(100 + number)));
    }

    static bool says(const QWidget& sheet, const QString& text) {
        return std::ranges::any_of(sheet.findChildren<QLabel*>(), [&](const QLabel* label) {
            return label->isVisible() && label->text() == text;
        });
    }
    bool isShown(const char* sheet, const QString& text) const {
        const QWidget* const shown = world.openDialog(sheet);
        return shown && shown->windowHandle()->isExposed() && says(*shown, text);
    }
    QImage onScreen() const {
        const QWidget& sheet = *world.openDialog(hiding);
        return sheet.screen()->grabWindow(sheet.winId()).toImage();
    }

    AppWorld world;
    Gate gate;
    std::vector<std::string> paths;
};

TEST_F(ProgressTest, OfABatchIsPaintedWhileTheListTakesNoInput) {
    appScratch().makeDirectory("home/Docs");
    for (const std::string& path : paths)
        writeFile(path, "content");
    world.files().addFiles(paths);
    world.files().waitForAdding();
    world.clickRow("100");
    realInput::key("Ctrl+A");
    QImage before;
    world.when(
        "the sheet", [this] { return isShown(hiding, "1 of 60"); },
        [&] {
            QWidget& sheet = *world.openDialog(hiding);
            EXPECT_TRUE(says(sheet, "File: " + QString::fromStdString(paths[1])));
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
        [this] {
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
