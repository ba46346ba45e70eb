#include "core/names/TraceNames.h"

#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace veilkeep::test {
namespace {

TEST(TraceNames, SpellsAPathWithItsLinksAndWithout) {
    const ScratchTree tree;
    tree.makeDirectory("real/.SYS_INDEX/rid");
    ASSERT_EQ(::symlink("real/.SYS_INDEX/rid", tree.path("link").c_str()), 0);
    EXPECT_EQ(spellingsOf(tree.path("./link//file")),
              (std::vector<std::string>{tree.path("link/file"), tree.path("real/.SYS_INDEX/rid/file"),
                                        tree.path("real/dir/file")}));
    EXPECT_EQ(spellingsOf("/missing/file"), std::vector<std::string>{"/missing/file"});
}

} // namespace
} // namespace veilkeep::test
