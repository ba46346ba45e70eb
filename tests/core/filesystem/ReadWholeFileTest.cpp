#include "core/filesystem/ReadWholeFile.h"

#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace veilkeep {
namespace {

TEST(ReadWholeFile, BoundsAFileThatTellsNoSizeAndWaitsForNone) {
    EXPECT_GT(readWholeFile("/proc/self/maps", 1 << 20).value().size(), 100U);
    EXPECT_EQ(readWholeFile("/proc/self/maps", 100).error().code, ErrorCode::TooLarge);
    const test::ScratchTree tree;
    ASSERT_EQ(::mkfifo(tree.path("fifo").c_str(), 0600), 0);
    EXPECT_EQ(readWholeFile(tree.path("fifo"), 10).error().code, ErrorCode::NotAFile);
}

} // namespace
} // namespace veilkeep
