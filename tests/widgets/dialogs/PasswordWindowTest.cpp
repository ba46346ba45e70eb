#include "widgets/dialogs/PasswordWindow.h"
#include "core/storage/DefaultsKeys.h"

#include "prefs/PasswordManager.h"
#include "tests/support/ScratchTree.h"
#include "tests/widgets/dialogs/OpenWindows.h"
#include "widgets/dialogs/PasswordPanel.h"

#include <QAccessible>
#include <QLabel>
#include <QLineEdit>

namespace veilkeep::test {
namespace {

QLineEdit& fieldOf(const QWidget& panel) {
    return *panel.findChild<QLineEdit*>();
}

bool isLabelShown(const QWidget& panel, const QString& text) {
    for (const QLabel* const label : panel.findChildren<QLabel*>())
        if (label->isVisible() && label->text().contains(text))
            return true;
    return false;
}

class PasswordWindowTest : public ::testing::Test {
protected:
    PasswordWindowTest() {
        m_defaults.set(defaultsKey::passwordEnabled, true);
        EXPECT_TRUE(m_passwords.setPassword("abc"));
        m_passwords.setPrompt(&m_window);
    }

    int ask(const std::function<void(PasswordPanel&)>& steps) {
        whenOpen<PasswordPanel>(steps);
        return m_passwords.showModalWindow();
    }

    ScratchTree m_tree;
    UserDefaults m_defaults;
    PasswordManager m_passwords{m_defaults};
    PasswordWindow m_window;
};

TEST_F(PasswordWindowTest, HowItEnds) {
    const struct {
        const char* what;
        std::function<void(PasswordPanel&)> steps;
        int answer;
    } rows[] = {
        {"right", [](auto&) { realInput::type("abc"), realInput::key("Return"); }, 1},
        {"right by the button",
         [](auto& panel) { realInput::type("abc"), realInput::click(*buttonOf(panel, "OK")); }, 1},
        {"Escape", [](auto&) { realInput::type("abc"), realInput::key("Escape"); }, 0},
        {"Cancel", [](auto& panel) { realInput::click(*buttonOf(panel, "Cancel")); }, 0},
        {"hidden", [](auto& panel) { panel.hide(); }, 0},
        {"left while it shakes",
         [this](auto&) { realInput::type("x"), realInput::key("Return"), m_passwords.cancelClick(); }, 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ask(row.steps), row.answer) << row.what;
        EXPECT_EQ(openWindow<PasswordPanel>(), nullptr) << row.what;
    }
}

TEST_F(PasswordWindowTest, FourWrongEntries) {
    const int answer = ask([](PasswordPanel& panel) {
        EXPECT_TRUE(isLabelShown(panel, "Enter your Veilkeep password:"));
        EXPECT_FALSE(isLabelShown(panel, "Wrong password"));
        realInput::type("wrong");
        for (const char* const count : {"1", "2", "3"}) {
            realInput::key("Return");
            EXPECT_TRUE(isLabelShown(panel, "Wrong password"));
            EXPECT_TRUE(isLabelShown(panel, count));
            EXPECT_EQ(fieldOf(panel).selectedText().size(), 5);
        }
        realInput::key("Return");
    });
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(openWindow<PasswordPanel>(), nullptr);
    ask([](PasswordPanel& panel) {
        EXPECT_TRUE(fieldOf(panel).text().isEmpty());
        realInput::key("Escape");
    });
}

TEST_F(PasswordWindowTest, SaysThatCapsLockIsOn) {
    const QString hint = "Caps Lock";
    ask([&](PasswordPanel& panel) {
        realInput::type("a");
        EXPECT_FALSE(isLabelShown(panel, hint));
        realInput::key("CapsLock");
        EXPECT_TRUE(isLabelShown(panel, hint)) << "by the key itself";
        for (const char* const key : {"b", "Shift+b", "1"}) {
            realInput::key(key);
            EXPECT_TRUE(isLabelShown(panel, hint)) << key;
        }
        realInput::key("CapsLock");
        EXPECT_FALSE(isLabelShown(panel, hint));
        realInput::key("Escape");
    });
}

TEST_F(PasswordWindowTest, TheFieldGivesNothingAway) {
    ask([](PasswordPanel& panel) {
        realInput::type("secret");
        EXPECT_EQ(fieldOf(panel).echoMode(), QLineEdit::Password);
        EXPECT_TRUE(fieldOf(panel).inputMethodHints() & Qt::ImhHiddenText);
        EXPECT_TRUE(fieldOf(panel).inputMethodHints() & Qt::ImhSensitiveData);
        QAccessibleInterface* const field = QAccessible::queryAccessibleInterface(&fieldOf(panel));
        EXPECT_EQ(field->text(QAccessible::Name), "Enter your Veilkeep password:");
        EXPECT_FALSE(field->text(QAccessible::Value).contains("secret"));
        realInput::key("Escape");
    });
}

} // namespace
} // namespace veilkeep::test
