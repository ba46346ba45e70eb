#include "widgets/dialogs/AlertWindows.h"

#include "alerts/Alerts.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/TurnUntil.h"
#include "tests/widgets/dialogs/OpenWindows.h"
#include "widgets/dialogs/AlertWindow.h"
#include "widgets/dialogs/ErrorTable.h"
#include "widgets/dialogs/TextBlock.h"

#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QClipboard>
#include <QScreen>

#include <memory>
#include <optional>

namespace veilkeep::test {
namespace {

class AlertWindowsTest : public ::testing::Test {
protected:
    AlertWindowsTest() {
        m_mainWindow->resize(600, 400);
        m_mainWindow->show();
    }

    int ask(const QString& title) {
        return m_alerts.ADRunCriticalAlertSheet(Alert::Window::Main, title, "Message", "First", "Second",
                                                "Last");
    }
    static int openAlerts() {
        int count = 0;
        for (const QWidget* const each : QApplication::topLevelWidgets())
            count += each->isVisible() && dynamic_cast<const AlertWindow*>(each) ? 1 : 0;
        return count;
    }

    ScratchTree m_tree;
    UserDefaults m_defaults{m_tree.path("defaults.plist")};
    std::unique_ptr<QWidget> m_mainWindow = std::make_unique<QWidget>();
    AlertWindows m_windows{[this] { return m_mainWindow.get(); }};
    Alerts m_alerts{m_windows, m_defaults};
};

TEST_F(AlertWindowsTest, EveryWayToAnswer) {
    const auto click = [](const char* button) {
        return [button](AlertWindow& window) { realInput::click(*buttonOf(window, button)); };
    };
    const auto press = [](const char* key) { return [key](AlertWindow&) { realInput::key(key); }; };
    const struct {
        const char* what;
        std::function<void(AlertWindow&)> steps;
        int code;
    } rows[] = {
        {"Return", press("Return"), 1},
        {"Escape", press("Escape"), -1},
        {"first", click("First"), 1},
        {"second", click("Second"), 0},
        {"closed", [](AlertWindow& window) { window.close(); }, -1},
        {"hidden", [](AlertWindow& window) { window.hide(); }, -1},
        {"main window gone", [this](AlertWindow&) { m_mainWindow.reset(); }, -1},
    };
    for (const auto& row : rows) {
        whenOpen<AlertWindow>(row.steps);
        EXPECT_EQ(ask(row.what), row.code) << row.what;
        EXPECT_EQ(openAlerts(), 0) << row.what;
    }
}

TEST_F(AlertWindowsTest, ASheetOnTheMainWindowWhereThatIsSeen) {
    const struct {
        Alert::Window window;
        bool isMainShown;
        Qt::WindowModality modality;
    } rows[] = {
        {Alert::Window::Main, true, Qt::WindowModal},
        {Alert::Window::Main, false, Qt::ApplicationModal},
        {Alert::Window::None, true, Qt::ApplicationModal},
    };
    for (const auto& row : rows) {
        m_mainWindow->setVisible(row.isMainShown);
        whenOpen<AlertWindow>([&](AlertWindow& window) {
            EXPECT_EQ(window.windowModality(), row.modality);
            EXPECT_EQ(window.parentWidget(), row.isMainShown ? m_mainWindow.get() : nullptr);
            realInput::key("Return");
        });
        EXPECT_EQ(m_alerts.ADRunAlertSheet(row.window, "Title", {}, "OK"), 1);
    }
}

TEST_F(AlertWindowsTest, AnAlertBelongsToTheWindowThatTheUserIsIn) {
    QWidget preferences;
    preferences.show();
    preferences.activateWindow();
    ASSERT_TRUE(turnUntil([&] { return QApplication::activeWindow() == &preferences; }));
    for (const Alert::Window kind : {Alert::Window::None, Alert::Window::Main}) {
        const QWidget* const wanted = kind == Alert::Window::None ? &preferences : m_mainWindow.get();
        whenOpen<AlertWindow>([&](AlertWindow& window) {
            EXPECT_EQ(window.parentWidget(), wanted);
            window.close();
        });
        m_alerts.ADRunCriticalAlertSheet(kind, "Title", "Message", "OK");
        preferences.activateWindow();
        ASSERT_TRUE(turnUntil([&] { return QApplication::activeWindow() == &preferences; }));
    }
}

TEST_F(AlertWindowsTest, TheCheckBoxDecidesWhetherItIsAskedAgain) {
    const auto askWith = [this](const std::function<void(AlertWindow&)>& steps) {
        whenOpen<AlertWindow>(steps);
        return m_alerts.ADRunWarningAlert("Title", "Text", "Yes", "No", {}, "DoNotAsk");
    };
    EXPECT_EQ(askWith([](AlertWindow&) { realInput::key("Return"); }), 1000);
    EXPECT_FALSE(m_defaults.contains("DoNotAsk"));
    EXPECT_EQ(askWith([](AlertWindow& window) {
                  const QCheckBox& box = *window.findChild<QCheckBox*>();
                  realInput::click(box, QPoint(10, box.height() / 2));
                  realInput::key("Escape");
              }),
              1001);
    EXPECT_EQ(UserDefaults(m_tree.path("defaults.plist")).boolean("DoNotAsk"), true);
}

TEST_F(AlertWindowsTest, TextsOfAnyLengthStayPlainAndOnTheScreen) {
    const QString rows[] = {QStringLiteral("<b>bold</b> & <img src=x>"), QStringLiteral("two\nlines"),
                            QString(4000, u'x'), QStringLiteral("many words ").repeated(400),
                            QStringLiteral("line\n").repeated(400)};
    for (const QString& text : rows) {
        whenOpen<AlertWindow>([&](AlertWindow& window) {
            for (const TextBlock* const block : window.findChildren<TextBlock*>())
                EXPECT_EQ(block->toPlainText(), text);
            EXPECT_TRUE(window.screen()->availableGeometry().contains(window.frameGeometry()));
            EXPECT_TRUE(window.rect().contains(buttonOf(window, "Fire && Water")->geometry()));
            realInput::key("Ctrl+C");
            EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(text));
            realInput::key("Return");
        });
        EXPECT_EQ(m_alerts.ADRunAlertSheet(Alert::Window::Main, text, text, "Fire & Water", "No"), 1);
    }
}

TEST_F(AlertWindowsTest, ThousandsOfErrorsAsATable) {
    Alert alert;
    alert.title = "Some errors have been occured";
    for (int number = 0; number < 5000; ++number)
        alert.errors.push_back({QStringLiteral("item\n%1").arg(number), "Unknown error"});
    whenOpen<AlertWindow>([](AlertWindow& window) {
        auto* const table = window.findChild<ErrorTable*>();
        const QAbstractItemModelTester tester(table->model());
        EXPECT_EQ(table->model()->rowCount(), 5000);
        EXPECT_EQ(table->textToCopy().count(u'\n'), 5000);
        realInput::click(*table->viewport(), QPoint(20, 5));
        realInput::key("Shift+Down");
        realInput::key("Ctrl+C");
        EXPECT_EQ(QGuiApplication::clipboard()->text(), "item 0\tUnknown error\nitem 1\tUnknown error\n");
        realInput::key("Escape");
    });
    EXPECT_EQ(m_alerts.runAlert(alert, {"Return to Veilkeep", "Force Quit"}), 1001);
}

TEST_F(AlertWindowsTest, LeavingAnswersWhatIsOpenHoweverDeep) {
    std::optional<int> inner;
    m_alerts.beginInformationalAlertSheet("Nobody waits for this", "Message");
    EXPECT_EQ(openAlerts(), 1);
    whenOpen<AlertWindow>([&](AlertWindow&) {
        QTimer::singleShot(0, qApp, [&] {
            EXPECT_TRUE(eventually([] { return openAlerts() == 3; }));
            m_alerts.setNobodyThere(true);
            EXPECT_EQ(openAlerts(), 0);
        });
        inner = ask("Inner");
    });
    EXPECT_EQ(ask("Outer"), -1);
    EXPECT_EQ(inner, -1);
    EXPECT_EQ(ask("Not shown"), -1);
    m_alerts.setNobodyThere(false);
    whenOpen<AlertWindow>([](AlertWindow&) { realInput::key("Return"); });
    EXPECT_EQ(ask("Back"), 1);
}

} // namespace
} // namespace veilkeep::test
