#include "core/storage/ListOwnership.h"

#include "core/base/PathText.h"
#include "filelist/FilesInfoFile.h"
#include "tests/support/FailingCall.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/RunInChild.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/syscall.h>

#include <algorithm>
#include <filesystem>

namespace veilkeep {
namespace {

using namespace std::chrono_literals;
using test::ScratchTree;

int errorOf(const std::string& directory, std::chrono::milliseconds wait = 0ms) {
    const auto ownership = ListOwnership::take(directory, wait);
    return ownership ? 0 : ownership.error().systemError;
}

TEST(OwnershipTest, BelongsToOneUntilThatOneEnds) {
    const ScratchTree tree;
    const std::string directory = tree.path("data/deep");
    {
        const auto first = ListOwnership::take(directory, 0ms); // nothing was there
        ASSERT_TRUE(first);
        EXPECT_EQ(test::modeOf(directory), 0700U);
        EXPECT_EQ(errorOf(directory, 5ms), EWOULDBLOCK);
    }
    EXPECT_EQ(errorOf(directory), 0);

    const pid_t killed = test::startChild([&] {
        const auto ownership = ListOwnership::take(directory, 0ms);
        ::raise(SIGKILL);
    });
    EXPECT_FALSE(test::endedWell(killed));
    EXPECT_EQ(errorOf(directory), 0) << "the lock of a process that was killed";
}

TEST(OwnershipTest, IsNobodysWhereItCannotBeTold) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can become another user and mount";
    const struct {
        const char* name;
        std::function<void(const ScratchTree&)> prepare;
        int error;
    } rows[] = {
        {"a file for a directory", [](const ScratchTree& tree) { tree.makeFile("data"); }, ENOTDIR},
        {"a read-only directory",
         [](const ScratchTree& tree) {
             tree.makeFile("data/.lock", "", 0666);
             tree.makeDirectory("data", 0555);
             test::becomeOrdinaryUser();
         },
         EACCES},
        {"a read-only file system",
         [](const ScratchTree& tree) {
             tree.makeFile("data/.lock");
             static std::optional<test::PrivateMount> mount;
             mount.emplace("some", tree.path("data"), "tmpfs", MS_RDONLY);
         },
         EROFS},
        {"a link for the lock",
         [](const ScratchTree& tree) {
             tree.makeDirectory("data");
             std::filesystem::create_symlink("elsewhere", tree.path("data/.lock"));
         },
         ELOOP},
        {"a file system without locks",
         [](const ScratchTree&) { ASSERT_TRUE(test::failCall(SYS_flock, ENOLCK)); }, ENOLCK},
    };
    for (const auto& row : rows) {
        const ScratchTree tree;
        EXPECT_TRUE(test::runInChild([&] {
            row.prepare(tree);
            EXPECT_EQ(errorOf(tree.path("data")), row.error);
        })) << row.name;
    }
}

// A lock on a file that has lost its name would be met by nobody else.
TEST(OwnershipTest, HoldsTheLockThatOthersMeet) {
    const ScratchTree tree;
    const std::string directory = tree.makeDirectory("data");
    const std::string lock = joinPath(directory, ".lock");
    std::optional held = ListOwnership::take(directory, 0ms);
    ASSERT_TRUE(*held);
    const pid_t waiting = test::startChild([&] {
        held.reset(); // the child's descriptor
        tree.makeDirectory("begins");
        EXPECT_EQ(errorOf(directory, 20s), 0);
        EXPECT_TRUE(test::exists(lock)) << "it is to make one anew";
    });
    const std::filesystem::path descriptors = "/proc/" + std::to_string(waiting) + "/fd";
    EXPECT_TRUE(test::waitUntil([&] {
        std::error_code gone;
        return test::exists(tree.path("begins")) &&
               std::ranges::any_of(std::filesystem::directory_iterator(descriptors), [&](const auto& entry) {
                   return std::filesystem::read_symlink(entry.path(), gone) == lock;
               });
    }));
    std::filesystem::remove(lock);
    held.reset();
    EXPECT_TRUE(test::endedWell(waiting));
}

} // namespace
} // namespace veilkeep
