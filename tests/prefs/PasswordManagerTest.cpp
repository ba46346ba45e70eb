#include "prefs/PasswordManager.h"
#include "core/storage/DefaultsKeys.h"

#include "core/log/Log.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace veilkeep::test {
namespace {

constexpr auto digestOfAbc = "900150983cd24fb0d6963f7d28e17f72";
constexpr auto digestOfNothing = "d41d8cd98f00b204e9800998ecf8427e";

// Does the steps of a script; one that is left over after the last step goes by itself.
class ScriptedPrompt : public PasswordPrompt {
public:
    using Step = std::function<void(PasswordManager&)>;

    void run(PasswordManager& manager, const QString& title, const QString& line) override {
        texts = {title, line};
        for (const Step& step : steps)
            step(manager);
    }
    void showWrongEntries(int count) override { counts.push_back(count); }
    void close() override { ++closed; }

    std::vector<Step> steps;
    QStringList texts;
    std::vector<int> counts;
    int closed = 0;
};

ScriptedPrompt::Step enter(const char* text) {
    return [text](PasswordManager& manager) { manager.okClick(text); };
}

void cancel(PasswordManager& manager) {
    manager.cancelClick();
}

class PasswordManagerTest : public ::testing::Test {
protected:
    ScratchTree m_tree;
    UserDefaults m_defaults;
    PasswordManager m_passwords{m_defaults};
};

TEST_F(PasswordManagerTest, Digests) {
    const std::pair<QString, const char*> rows[] = {
        {"abc", digestOfAbc},
        {"", digestOfNothing},
        {QString(QChar(0x7f)), "83acb6e67e50e31db6ed341dd2de1595"},
        {QString(QChar(0x80)), digestOfNothing},
        {QStringLiteral("abc\u00e9"), digestOfNothing},
    };
    for (const auto& [password, digest] : rows)
        EXPECT_EQ(PasswordManager::cypher(password), digest) << password.toStdString();
}

TEST_F(PasswordManagerTest, WhatIsAccepted) {
    struct {
        std::optional<bool> isEnabled;
        std::optional<std::string> digest;
        QString entered;
        bool isAccepted;
    } const rows[] = {
        {std::nullopt, digestOfAbc, "x", true},
        {false, digestOfAbc, "", true},
        {true, std::nullopt, "", false},
        {true, digestOfAbc, "abc", true},
        {true, digestOfAbc, "ABC", false},
        {true, digestOfAbc, "", false},
        {true, "", "", false},
        {true, digestOfNothing, QStringLiteral("\u00e9"), true},
    };
    for (const auto& row : rows) {
        m_defaults.remove(defaultsKey::passwordEnabled);
        m_defaults.remove(defaultsKey::passwordDigest);
        if (row.isEnabled)
            m_defaults.set(defaultsKey::passwordEnabled, *row.isEnabled);
        if (row.digest)
            m_defaults.set(defaultsKey::passwordDigest, *row.digest);
        ASSERT_TRUE(m_defaults.synchronize());
        EXPECT_EQ(m_passwords.checkPassword(row.entered), row.isAccepted) << row.entered.toStdString();
        EXPECT_TRUE(UserDefaults().contains(defaultsKey::passwordEnabled)) << "stored where it was absent";
    }
    ASSERT_TRUE(m_passwords.setPassword("new"));
    EXPECT_TRUE(m_passwords.isPasswordEnabled());
    EXPECT_EQ(UserDefaults().string(defaultsKey::passwordDigest),
              PasswordManager::cypher("new").toStdString());
}

TEST_F(PasswordManagerTest, AnAbsentSwitchIsNotStoredOverWhatAnotherProgramJustSet) {
    UserDefaults other;
    other.set(defaultsKey::passwordEnabled, true);
    ASSERT_TRUE(other.synchronize());
    ASSERT_TRUE(m_defaults.storeIfAbsent(defaultsKey::passwordEnabled, false));
    EXPECT_TRUE(m_passwords.isPasswordEnabled());
}

TEST_F(PasswordManagerTest, AnAbsentSwitchThatCannotBeStored) {
    writeFile(m_tree.path("file"), {});
    UserDefaults defaults(m_tree.path("file/settings.plist"));
    PasswordManager passwords(defaults);
    EXPECT_FALSE(passwords.isPasswordEnabled());
    EXPECT_FALSE(defaults.contains(defaultsKey::passwordEnabled)) << "nothing of it is pending";
    EXPECT_NE(readFile(Log::shared().path()).find("could not be stored"), std::string::npos);
}

TEST_F(PasswordManagerTest, PromptsFromOpeningToEnd) {
    m_defaults.set(defaultsKey::passwordEnabled, true);
    ASSERT_TRUE(m_passwords.setPassword("abc"));
    EXPECT_EQ(m_passwords.showModalWindow(), 0) << "nobody asks";
    const auto openAnother = [](PasswordManager& manager) { EXPECT_EQ(manager.showModalWindow(), 0); };
    struct {
        const char* what;
        std::vector<ScriptedPrompt::Step> steps;
        int returnCode;
        std::vector<int> counts;
    } const rows[] = {
        {"right at once", {enter("abc")}, 1, {}},
        {"right at last", {enter("x"), enter(""), enter("x"), enter("abc")}, 1, {1, 2, 3}},
        {"four wrong", {enter("x"), enter("x"), enter("x"), enter("x"), enter("abc")}, 0, {1, 2, 3}},
        {"cancelled", {cancel, enter("abc")}, 0, {}},
        {"cancelled after a wrong one", {enter("x"), cancel}, 0, {1}},
        {"left while the prompt goes", {enter("abc"), cancel}, 0, {}},
        {"wrong while the prompt goes", {enter("abc"), enter("x")}, 1, {}},
        {"a second prompt in its midst", {enter("x"), openAnother, enter("abc")}, 1, {1}},
    };
    for (const auto& row : rows) {
        ScriptedPrompt prompt;
        prompt.steps = row.steps;
        m_passwords.setPrompt(&prompt);
        EXPECT_EQ(m_passwords.showModalWindow(), row.returnCode) << row.what;
        EXPECT_EQ(prompt.counts, row.counts) << row.what;
        EXPECT_EQ(prompt.closed, 1) << row.what;
        EXPECT_EQ(prompt.texts, QStringList({"Veilkeep", "Enter your Veilkeep password:"})) << row.what;
        EXPECT_FALSE(m_passwords.isPromptVisible()) << row.what;
    }
    ScriptedPrompt silent;
    m_passwords.setPrompt(&silent);
    EXPECT_EQ(m_passwords.showModalWindow(), 0) << "it went by itself";
    m_passwords.cancelClick();
    EXPECT_EQ(silent.closed, 0) << "none is open";
}

} // namespace
} // namespace veilkeep::test
