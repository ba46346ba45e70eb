#include "widgets/dialogs/ProgressSheet.h"

#include "filelist/MainThread.h"
#include "tests/support/WaitUntil.h"
#include "tests/widgets/dialogs/OpenWindows.h"
#include "widgets/dialogs/ProgressPanel.h"

#include <QDeadlineTimer>
#include <QSignalSpy>
#include <QWindow>

namespace veilkeep::test {
namespace {

class ProgressSheetTest : public ::testing::Test {
protected:
    ProgressSheetTest() : m_button("Delete", &m_mainWindow) {
        m_mainWindow.resize(600, 400);
        EXPECT_TRUE(showAndActivate(m_mainWindow));
    }

    void workUntil(const std::function<bool()>& condition) { // as a batch whose worker is waited for
        EXPECT_TRUE(waitUntil([&] { return m_sheet.turnEventLoop(), condition(); }));
    }

    static void clickWhileBusy(const QWidget& widget) {
        const realInput::WhileBusy busy;
        realInput::click(widget);
    }

    QWidget m_mainWindow;
    QPushButton m_button;
    ProgressSheet m_sheet{[this] { return &m_mainWindow; }};
};

TEST_F(ProgressSheetTest, CancelWorksWhereInputIsHeldBack) {
    const QSignalSpy clicks(&m_button, &QPushButton::clicked);
    for (const bool byTick : {false, true}) {
        m_sheet.begin("Searching", true);
        EXPECT_FALSE(m_sheet.isCancelled());
        workUntil([] {
            return openWindow<ProgressPanel>() && openWindow<ProgressPanel>()->windowHandle()->isExposed();
        });
        clickWhileBusy(m_button);
        clickWhileBusy(*buttonOf(*openWindow<ProgressPanel>(), "Cancel"));
        if (byTick)
            workUntil([&] { return m_sheet.isCancelled(); });
        QTimer look;
        look.start(10);
        const QDeadlineTimer deadline(10'000);
        MainThread::runUntil([&] { return m_sheet.isCancelled() || deadline.hasExpired(); });
        m_sheet.end();
        EXPECT_TRUE(m_sheet.isCancelled()) << "until it begins anew";
        EXPECT_TRUE(eventually([] { return openWindow<ProgressPanel>() == nullptr; }));
    }
    EXPECT_EQ(clicks.count(), 0);
}

TEST_F(ProgressSheetTest, EscapeEndsOnlyWhatCanBeCancelled) {
    for (const bool canBeCancelled : {false, true}) {
        m_sheet.begin("Restoring", canBeCancelled);
        ASSERT_TRUE(eventually([] { return openWindow<ProgressPanel>() != nullptr; }));
        EXPECT_TRUE(showAndActivate(*openWindow<ProgressPanel>()));
        realInput::key("Escape");
        EXPECT_EQ(m_sheet.isCancelled(), canBeCancelled);
        EXPECT_NE(openWindow<ProgressPanel>(), nullptr) << "until the work has ended";
        m_sheet.end();
        EXPECT_TRUE(eventually([] { return openWindow<ProgressPanel>() == nullptr; }));
    }
}

TEST_F(ProgressSheetTest, NothingIsShownForNoTimeOrWithoutTheMainWindow) {
    m_sheet.begin("Hiding", false);
    m_sheet.setDone(1, 2);
    m_sheet.end();
    settle();
    EXPECT_EQ(openWindow<ProgressPanel>(), nullptr);
    m_mainWindow.hide();
    m_sheet.begin("Hiding", true);
    m_sheet.setSubStage("File");
    settle();
    EXPECT_EQ(openWindow<ProgressPanel>(), nullptr);
    EXPECT_FALSE(m_sheet.isCancelled());
    m_sheet.end();
}

} // namespace
} // namespace veilkeep::test
