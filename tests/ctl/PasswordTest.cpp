#include "core/environment/XdgDirectories.h"
#include "core/storage/ListOwnership.h"
#include "core/storage/UserDefaults.h"
#include "tests/ctl/Terminal.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

namespace veilkeep::test {
namespace {

using Words = std::vector<std::string>;

// The password as a user or a script meets it in veilkeepctl.
class PasswordTest : public ::testing::Test {
protected:
    static Words command(Words words) {
        words.insert(words.begin(), bundledProgram("veilkeepctl"));
        return words;
    }

    ProgramRun ctl(const Words& words, const std::string& input = {}) {
        const std::string file = m_tree.makeFile("input", input);
        return runProgram(command(words),
                          {0, m_tree.root(), [&] { ::dup2(::open(file.c_str(), O_RDONLY), STDIN_FILENO); }});
    }

    void setPassword(const std::string& password) {
        ASSERT_EQ(ctl({"password", "set", "--password-stdin"}, password).exitStatus, 0);
    }

    ScratchTree m_tree;
};

// Each row is one call; what it left lives on from row to row.
TEST_F(PasswordTest, FromStandardInput) {
    m_tree.makeFile("a");
    const std::string visible = m_tree.path("a"), hidden = m_tree.path(".SYS_INDEX/a");
    struct {
        Words words;
        std::string input;
        int status;
        bool isHidden;
    } const rows[] = {
        {{"password", "check"}, "", 0, false},
        {{"password", "off"}, "", 0, false},
        {{"password", "change", "--password-stdin"}, "old\nnew\n", 3, false},
        {{"password", "set", "--password-stdin"}, "", 3, false},
        {{"password", "set", "--password-stdin"}, "\n", 3, false},
        {{"password", "set", "--password-stdin"}, "\xC3\xA9\n", 3, false},
        {{"hide", "a"}, "", 0, true}, // none of these set one
        {{"password", "set", "--password-stdin"}, "a b \nmore", 0, true},
        {{"password", "set", "--password-stdin"}, "other", 3, true},
        {{"unhide", "a"}, "", 3, true},
        {{"unhide", "a", "--password-stdin"}, "", 3, true},
        {{"unhide", "a", "--password-stdin"}, "a b\n", 3, true},
        {{"unhide", "a", "--password-stdin"}, "a b\na b \n", 3, true},
        {{"list"}, "", 3, true},
        {{"status"}, "", 0, true},
        {{"unhide", "a", "--password-stdin"}, "a b \n", 0, false},
        {{"password", "change", "--password-stdin"}, "other\nnew\n", 3, false},
        {{"password", "change", "--password-stdin"}, "a b \n\xC3\xA9\n", 3, false},
        {{"password", "change", "--password-stdin"}, "a b \nnew", 0, false},
        {{"password", "check", "--password-stdin"}, "a b \n", 3, false},
        {{"password", "check", "--password-stdin"}, "new\n", 0, false},
        {{"password", "off", "--password-stdin"}, "other", 3, false},
        {{"password", "off", "--password-stdin"}, "new", 0, false},
        {{"hide", "a"}, "", 0, true},
        {{"password"}, "", 2, true},
        {{"status", "--password-stdin"}, "", 2, true},
    };
    for (const auto& row : rows) {
        const ProgramRun run = ctl(row.words, row.input);
        const std::string call = row.words[0] + " " + row.words.back() + " <" + row.input;
        EXPECT_EQ(run.exitStatus, row.status) << call << run.errors;
        EXPECT_EQ(run.output.empty(), row.words[0] == "password" || row.status != 0) << call << run.output;
        EXPECT_TRUE(row.status == 0 || !run.errors.empty()) << call;
        EXPECT_EQ(exists(hidden), row.isHidden) << call;
        EXPECT_EQ(exists(visible), !row.isHidden) << call;
    }
    EXPECT_EQ(UserDefaults().string("Password"), "22af645d1859cb5ca6da0c484f1f37ea")
        << "stays when it is off";
}

TEST_F(PasswordTest, TypedOnTheTerminal) {
    setPassword("abc");
    const std::string prompt = "Enter your Veilkeep password: ";
    struct {
        Words keys; // one after each prompt
        int status;
    } const rows[] = {
        {{"abc\n"}, 0},
        {{"typo\n", "x\n", "\n", "abc\n"}, 0},
        {{"typo\n", "x\n", "\n", "abcd\n"}, 3},
        {{"ty\x03"}, 3},
        {{"\x04"}, 3},
        {{"ty\x1C"}, -SIGQUIT},
    };
    for (const auto& row : rows) {
        Terminal terminal(command({"password", "check"}), m_tree.root());
        std::string shown;
        for (const std::string& keys : row.keys) {
            shown += terminal.readUntil(prompt);
            EXPECT_FALSE(terminal.showsTyping()) << row.keys[0];
            terminal.type(keys);
        }
        EXPECT_EQ(terminal.waitForEnd(), row.status) << row.keys[0];
        EXPECT_TRUE(terminal.showsTyping()) << row.keys[0];
        shown += terminal.readUntil({});
        EXPECT_EQ(shown.find("ty"), std::string::npos) << shown;
        for (std::size_t wrong = 1; wrong < row.keys.size(); ++wrong)
            EXPECT_NE(shown.find("Wrong entries so far: " + std::to_string(wrong)), std::string::npos)
                << shown;
    }
}

TEST_F(PasswordTest, AShellFindsTheTerminalAsItWasWhileTheProgramIsStopped) {
    setPassword("abc");
    m_tree.makeFile("a");
    Terminal terminal(command({"hide", "a"}), m_tree.root());
    terminal.readUntil("password: ");
    EXPECT_TRUE(ListOwnership::take(OwnPlaces::current().dataDirectory, std::chrono::milliseconds(0)))
        << "others need not wait for a person";
    terminal.type("ab\x1A");
    ASSERT_TRUE(terminal.waitUntilStopped());
    EXPECT_TRUE(terminal.showsTyping());
    terminal.goOn();
    EXPECT_NE(terminal.readUntil("password: "), "");
    EXPECT_FALSE(terminal.showsTyping());
    terminal.type("abc\n");
    EXPECT_EQ(terminal.waitForEnd(), 0);
    EXPECT_TRUE(terminal.showsTyping());
    EXPECT_TRUE(exists(m_tree.path(".SYS_INDEX/a")));
}

TEST_F(PasswordTest, ANewOneIsTypedTwice) {
    const std::pair<std::string, int> rows[] = {{"other\n", 3}, {"\x03", 3}, {"abc\n", 0}};
    for (const auto& [again, status] : rows) {
        Terminal terminal(command({"password", "set"}), m_tree.root());
        terminal.readUntil("new Veilkeep password: ");
        terminal.type("abc\n");
        terminal.readUntil("again: ");
        terminal.type(again);
        EXPECT_EQ(terminal.waitForEnd(), status) << again;
        EXPECT_EQ(ctl({"password", "check", "--password-stdin"}, "wrong").exitStatus, status == 0 ? 3 : 0);
    }
}

} // namespace
} // namespace veilkeep::test
