#include "core/filesystem/ReadWholeFile.h"

#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace veilkeep {
namespace {

using test::ScratchTree;

TEST(ReadWholeFile, GivesAllBytesUpToTheLimit) {
    const ScratchTree tree;
    for (const std::size_t size : {0U, 1U, 4095U, 4096U, 4097U, 100'000U}) {
        const std::string content(size, '\xff');
        const std::string path = tree.makeFile("file", content);
        FileStamp stamp;
        const auto exact = readWholeFile(path, size, &stamp);
        ASSERT_TRUE(exact) << size;
        EXPECT_EQ(*exact, content) << size;
        EXPECT_EQ(std::optional(stamp), *fileStamp(path)) << size;
        if (size > 0) {
            const auto beyond = readWholeFile(path, size - 1);
            ASSERT_FALSE(beyond) << size;
            EXPECT_EQ(beyond.error().code, ErrorCode::TooLarge) << size;
        }
    }
}

TEST(ReadWholeFile, BoundsAFileThatTellsNoSize) {
    const auto all = readWholeFile("/proc/self/maps", 1 << 20);
    ASSERT_TRUE(all);
    EXPECT_GT(all->size(), 100U);
    EXPECT_EQ(readWholeFile("/proc/self/maps", 100).error().code, ErrorCode::TooLarge);
}

TEST(ReadWholeFile, RefusesWhatIsNoFileWithoutWaiting) {
    const ScratchTree tree;
    ASSERT_EQ(::mkfifo(tree.path("fifo").c_str(), 0600), 0);
    EXPECT_EQ(readWholeFile(tree.path("fifo"), 10).error().code, ErrorCode::NotAFile);
    EXPECT_EQ(readWholeFile(tree.root(), 10).error().code, ErrorCode::NotAFile);
    EXPECT_EQ(readWholeFile(tree.path("missing"), 10).error().systemError, ENOENT);
}

} // namespace
} // namespace veilkeep
