#include "session/ProcessInfo.h"

#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace veilkeep::test {
namespace {

TEST(ProcessInfoTest, AppsFolders) {
    const ScratchTree tree;
    const std::pair<std::string, bool> rows[] = {
        {"/usr/lib/veilkeep/Veilkeep.app", true},
        {"/usr/lib/veilkeep/sub/Veilkeep.app", true},
        {"/usr/lib/veilkeepOld/Veilkeep.app", true}, // the text alone counts
        {tree.home() + "/.local/lib/veilkeep/Veilkeep.app", true},
        {"/usr/lib/Veilkeep.app", false},
        {tree.home() + "/Veilkeep.app", false},
        {"/srv/usr/lib/veilkeep/Veilkeep.app", false},
        {"", false},
    };
    tree.makeDirectory("home/.local/lib/veilkeep");
    ASSERT_EQ(::symlink(tree.home().c_str(), tree.path("link").c_str()), 0);
    EXPECT_TRUE(ProcessInfo::isInAppsFolder(tree.path("link/.local/lib/veilkeep/Veilkeep.app")));
    for (const auto& [bundle, isThere] : rows)
        EXPECT_EQ(ProcessInfo::isInAppsFolder(bundle), isThere) << bundle;
}

} // namespace
} // namespace veilkeep::test
