#include "tests/widgets/preferences/PrefsWorld.h"

#include <QAccessible>
#include <QLineEdit>

namespace veilkeep::test {
namespace {

constexpr const char *requireBox = "Require a password to open Veilkeep", *blank = "The password is empty.",
                     *differ = "The two entries differ.", *newDiffer = "The two new entries differ.",
                     *wrongOld = "The old password is wrong.";

// The Security page is open; a password is set where that is said.
class PasswordPagesTest : public ::testing::Test {
protected:
    void begin(const char* password = nullptr) {
        if (password) {
            m_world.defaults.set(defaultsKey::passwordEnabled, true);
            ASSERT_TRUE(m_world.passwords.setPassword(password));
        }
        ASSERT_TRUE(m_world.show());
        m_world.click("Security");
        m_world.notifications = 0;
    }

    // Into one field after the other, then the key.
    static void enter(const QStringList& entries, const char* then = "Return") {
        for (const QString& entry : entries) {
            realInput::key("Ctrl+A");
            realInput::key("Del");
            realInput::type(entry);
            if (&entry != &entries.back())
                realInput::key("Tab");
        }
        realInput::key(then);
    }

    bool isOnSecurityPage() const {
        return m_world.window->page() == PrefsPage::Security && m_world.window->windowTitle() == "Security";
    }
    bool isStored(const char* password) const {
        return UserDefaults().string(defaultsKey::passwordDigest) ==
               PasswordManager::cypher(password).toStdString();
    }

    ScratchTree m_tree;
    PrefsWorld m_world{m_tree};
};

TEST_F(PasswordPagesTest, SettingOne) {
    begin();
    m_world.click(requireBox);
    EXPECT_EQ(m_world.window->page(), PrefsPage::SetPassword);
    EXPECT_FALSE(m_world.window->isOn(PrefsBox::RequirePasswordBox)) << "the click alone changes nothing";
    EXPECT_EQ(m_world.lines(), QStringList());
    const struct {
        QStringList entries;
        QStringList lines;
    } refused[] = {
        {{"x", ""}, {differ}},
        {{"", ""}, {blank}},
        {{"a", "A"}, {differ}},
    };
    for (const auto& row : refused) {
        enter(row.entries);
        EXPECT_EQ(m_world.lines(), row.lines) << row.entries.join('|').toStdString();
        const auto* const told =
            QAccessible::queryAccessibleInterface(m_world.find<QLabel>(row.lines.first()));
        EXPECT_EQ(told->role(), QAccessible::AlertMessage) << "is read out";
        EXPECT_EQ(told->text(QAccessible::Name), row.lines.first());
        EXPECT_FALSE(m_world.passwords.isPasswordEnabled());
    }
    enter({"secret", "secret"});
    EXPECT_TRUE(isOnSecurityPage());
    EXPECT_EQ(m_world.stored(defaultsKey::passwordEnabled), Value(true));
    EXPECT_TRUE(isStored("secret"));
    EXPECT_TRUE(m_world.window->isOn(PrefsBox::RequirePasswordBox));
    EXPECT_EQ(m_world.notifications, 1);
}

TEST_F(PasswordPagesTest, CancellingTheNewOneSwitchesOffAndTellsNobody) {
    begin();
    m_world.click("Set Password…");
    UserDefaults other;
    other.remove(defaultsKey::passwordEnabled);
    ASSERT_TRUE(other.synchronize());
    enter({"secret"}, "Tab");
    m_world.click("Cancel");
    EXPECT_TRUE(isOnSecurityPage());
    EXPECT_EQ(m_world.stored(defaultsKey::passwordEnabled), Value(false));
    EXPECT_EQ(m_world.notifications, 0);
    m_world.click(requireBox);
    EXPECT_EQ(m_world.window->stringValue(PrefsField::SetPasswordSecureField), "");
}

TEST_F(PasswordPagesTest, ChangingIt) {
    const struct {
        const char* what;
        QStringList entries;
        QStringList lines; // empty: changed
    } rows[] = {
        {"wrong old one, told before the mismatch", {"x", "a", "b"}, {wrongOld}},
        {"mismatch with nothing", {"old", "", "b"}, {newDiffer}},
        {"changed", {"old", "new", "new"}, {}},
        {"to an empty one", {"new", "", ""}, {}},
    };
    begin("old");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        if (isOnSecurityPage())
            m_world.click("Change Password…");
        EXPECT_EQ(m_world.window->page(), PrefsPage::ChangePassword);
        m_world.find<QLineEdit>("Old password")->setFocus();
        enter(row.entries);
        EXPECT_EQ(m_world.lines(), row.lines);
        EXPECT_EQ(isOnSecurityPage(), row.lines.isEmpty());
        EXPECT_EQ(isStored(row.entries[1].toUtf8()), row.lines.isEmpty());
    }
    EXPECT_EQ(m_world.stored(defaultsKey::passwordEnabled), Value(true));
    EXPECT_EQ(m_world.notifications, 0);
}

TEST_F(PasswordPagesTest, SwitchingItOffTakesItAndFourWrongEntriesLeaveItOn) {
    begin("secret");
    const QString wrong = "Wrong password:", of = "of 4 attempts used";
    for (const int wrongEntries : {4, 2}) {
        m_world.click(requireBox);
        EXPECT_TRUE(m_world.window->isOn(PrefsBox::RequirePasswordBox)) << "the click alone changes nothing";
        EXPECT_EQ(m_world.window->page(), PrefsPage::AskPassword);
        EXPECT_EQ(m_world.lines(), QStringList()) << "counted anew each time";
        for (int entry = 1; entry <= wrongEntries; ++entry) {
            enter({"wrong"});
            const QStringList counted{wrong, QString::number(entry), of};
            EXPECT_EQ(m_world.lines(), entry <= 3 ? counted : QStringList());
        }
        if (wrongEntries < 4)
            enter({"secret"});
        EXPECT_TRUE(isOnSecurityPage());
        const bool isOn = wrongEntries == 4;
        EXPECT_EQ(m_world.stored(defaultsKey::passwordEnabled), Value(isOn));
        EXPECT_EQ(m_world.window->isOn(PrefsBox::RequirePasswordBox), isOn);
    }
    EXPECT_TRUE(isStored("secret"));
}

TEST_F(PasswordPagesTest, AWrongEntryKeepsTheFocusAndEscapeForgetsAll) {
    begin("secret");
    m_world.click(requireBox);
    enter({"wrong"});
    EXPECT_EQ(m_world.find<QLineEdit>("Password")->selectedText().size(), 5);
    realInput::key("Escape");
    EXPECT_FALSE(m_world.window->isVisible());
    EXPECT_EQ(m_world.window->stringValue(PrefsField::EnterPasswordSecureField), "");
    ASSERT_TRUE(m_world.show());
    EXPECT_TRUE(isOnSecurityPage());
    EXPECT_TRUE(m_world.passwords.isPasswordEnabled());
}

TEST_F(PasswordPagesTest, HintsOfTheFields) {
    const QString plainOnly = "Only plain letters, digits and signs protect.";
    begin();
    m_world.click(requireBox);
    auto* const field = m_world.find<QLineEdit>("Password");
    field->setText(QStringLiteral("pässword"));
    EXPECT_EQ(m_world.lines(), QStringList(plainOnly));
    EXPECT_EQ(field->echoMode(), QLineEdit::Password);
    EXPECT_TRUE(field->inputMethodHints() & Qt::ImhSensitiveData);
}

// Whoever is locked out by a switch without a digest, or believes to be protected, is told too late.
TEST(FailedPasswordTest, IsToldAndChangesNothing) {
    const ScratchTree tree;
    tree.makeFile("file");
    PrefsWorld world(tree, tree.path("file/settings.plist"));
    ASSERT_TRUE(world.show());
    world.click("Security");
    world.click(requireBox);
    realInput::type("secret");
    realInput::key("Tab");
    realInput::type("secret");
    realInput::key("Return");
    EXPECT_TRUE(world.trouble().contains("The password could not be stored."));
    EXPECT_EQ(world.window->page(), PrefsPage::Security);
    EXPECT_FALSE(world.window->isOn(PrefsBox::RequirePasswordBox));
    EXPECT_FALSE(world.passwords.isPasswordEnabled());
    EXPECT_FALSE(world.passwords.storedPassword());
}

} // namespace
} // namespace veilkeep::test
