#include "core/storage/DefaultsKeys.h"
#include "core/storage/UserDefaults.h"
#include "prefs/PasswordManager.h"
#include "tests/ctl/CtlCalls.h"
#include "tests/ctl/Terminal.h"
#include "tests/support/BackgroundProgram.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <optional>

namespace veilkeep::test {
namespace {

// Another program owns the list and works on what veilkeepctl asks of it.
TEST(ApplicationTest, RequestsGoToWhoeverOwnsTheList) {
    const ScratchTree tree;
    const PrivateBus bus(tree, PrivateBus::Place::Session);
    if (!bus.whyMissing().empty())
        GTEST_SKIP() << bus.whyMissing();
    BackgroundProgram owner({VEILKEEP_LIST_OWNER});
    ASSERT_EQ(owner.readLine(), "serves");
    tree.makeFile("t/\xFF"
                  "a");
    const std::string visible = tree.path("t/\xFF"
                                          "a");
    const std::string hidden = tree.path("t/.SYS_INDEX/a\xFF");
    expectCalls(
        {
            {{"hide", visible, "t/none"}, hidden + "\n", "t/none: Item not found.\n"},
            {{"list"}, "hidden\t" + visible + "\n"},
            {{"status"}, "items\t1\nhidden\t1\nvisible\t0\nbroken\t0\nowner\tapplication\n"},
            {{"remove", visible},
             "",
             "Unhide all files\nYou are trying to remove some hidden files from list! Would you "
             "like to unhide them first?\nveilkeepctl: not asked, so answered with: Cancel\n"
             "veilkeepctl: Nothing was removed.\n",
             3},
            {{"remove", "--answer=remove", visible}, hidden + "\n"},
            {{"unhide", hidden}, visible + "\n"},
            {{"group", "add", "\xFFWork"}, "\xFFWork\n"},
            {{"move", "--group=\xFFWork", visible}, visible + "\n"},
            {{"groups"},
             "shown\t-\t1\tAll Files\nshown\t-\t0\tSecret Pictures\nshown\t-\t0\tPrivate Files\n"
             "shown\t-\t1\t\xFFWork\n"},
            {{"group", "autohide", "\xFFWork", "on"}, ""},
            {{"autohide"}, ""},
            {{"list", "--group=\xFFWork"}, "hidden\t" + visible + "\n"},
            {{"autounhide"}, visible + "\n"},
            {{"group", "remove", "\xFFWork", "--yes"}, ""},
        },
        tree.root());
}

// It is asked for on the terminal of whoever made the request, and taken back when the owner ends.
TEST(ApplicationTest, ThePasswordIsAskedForWhereTheRequestWasMade) {
    const ScratchTree tree;
    const PrivateBus bus(tree, PrivateBus::Place::Session);
    if (!bus.whyMissing().empty())
        GTEST_SKIP() << bus.whyMissing();
    UserDefaults defaults;
    defaults.set(defaultsKey::passwordEnabled, true);
    ASSERT_TRUE(PasswordManager(defaults).setPassword("abc"));
    tree.makeFile("a");
    std::optional<BackgroundProgram> owner;
    const auto type = [&](const char* keys) {
        Terminal terminal({bundledProgram("veilkeepctl"), "hide", "a"}, tree.root());
        EXPECT_NE(terminal.readUntil("password: "), "");
        EXPECT_FALSE(terminal.showsTyping());
        if (keys)
            terminal.type(keys);
        else
            owner.reset();
        const int status = terminal.waitForEnd();
        EXPECT_TRUE(terminal.showsTyping());
        return status;
    };
    owner.emplace(std::vector<std::string>{VEILKEEP_LIST_OWNER});
    ASSERT_EQ(owner->readLine(), "serves");
    EXPECT_EQ(type("\x03"), 3);
    EXPECT_EQ(type(nullptr), 1);
    EXPECT_TRUE(exists(tree.path("a")));
    owner.emplace(std::vector<std::string>{VEILKEEP_LIST_OWNER});
    ASSERT_EQ(owner->readLine(), "serves");
    EXPECT_EQ(type("abc\n"), 0);
    EXPECT_TRUE(exists(tree.path(".SYS_INDEX/a")));
}

} // namespace
} // namespace veilkeep::test
