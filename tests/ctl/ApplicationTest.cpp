#include "core/storage/DefaultsKeys.h"
#include "core/storage/UserDefaults.h"
#include "prefs/PasswordManager.h"
#include "tests/ctl/Terminal.h"
#include "tests/support/BackgroundProgram.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <optional>

namespace veilkeep::test {
namespace {

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
