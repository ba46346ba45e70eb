#include "core/storage/ListOwnership.h"

#include "core/base/PathText.h"
#include "filelist/FilesInfoFile.h"
#include "tests/support/FailingCall.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/Rounds.h"
#include "tests/support/RunInChild.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <algorithm>
#include <filesystem>
#include <set>

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
    struct Row {
        const char* name;
        std::function<void(const ScratchTree&)> prepare;
        int error;
    };
    const Row rows[] = {
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
    for (const Row& row : rows) {
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

void takeAndAppend(const std::string& directory, const std::string& item) {
    const auto ownership = ListOwnership::take(directory, 60s);
    ASSERT_TRUE(ownership) << ownership.error().systemError;
    const std::string mark = joinPath(directory, "owner");
    ASSERT_EQ(::mkdir(mark.c_str(), 0700), 0) << "another one owns the list as well";
    FilesInfoFile file(joinPath(directory, "FilesInfo.Veilkeep"));
    FilesInfoFile::Loaded loaded = file.load();
    ASSERT_FALSE(loaded.trouble);
    FileList list;
    list.assign(loaded.files.value_or(std::vector<File>()));
    list.append(File::initWithPath(item));
    ASSERT_TRUE(file.save(list.all()));
    ASSERT_EQ(::rmdir(mark.c_str()), 0);
}

TEST(OwnershipTest, LosesNoUpdateOfFiftyProcesses) {
    constexpr int processes = 50;
    const ScratchTree tree;
    for (int round = 0; round < test::rounds(100, 200); ++round) {
        const std::string directory = tree.path("data " + std::to_string(round));
        std::vector<pid_t> children;
        std::set<std::string> expected, found;
        for (int number = 0; number < processes; ++number) {
            const std::string item = *expected.insert("/item " + std::to_string(number)).first;
            children.push_back(test::startChild([&] { takeAndAppend(directory, item); }));
        }
        for (const pid_t child : children)
            ASSERT_TRUE(test::endedWell(child)) << "round " << round;
        const auto loaded = FilesInfoFile(joinPath(directory, "FilesInfo.Veilkeep")).load();
        ASSERT_TRUE(loaded.files);
        for (const File& file : *loaded.files)
            found.emplace(file.path());
        ASSERT_EQ(found, expected) << "round " << round;
        ASSERT_EQ(loaded.files->size(), expected.size());
    }
}

} // namespace
} // namespace veilkeep
