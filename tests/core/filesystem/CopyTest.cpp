#include "core/base/UniqueFd.h"
#include "core/filesystem/ContentCopy.h"
#include "core/filesystem/KeptAttributes.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/RunInChild.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cstddef>
#include <string>

namespace veilkeep::test {
namespace {

UniqueFd opened(const std::string& path, int flags = O_RDWR | O_CREAT) {
    return UniqueFd(::open(path.c_str(), flags | O_CLOEXEC, 0600));
}

TEST(CopyTest, GetsNoLongerThanAFileThatIsCutOffMeanwhile) {
    constexpr off_t mebibyte = off_t{1} << 20; // and so much is read at once
    const ScratchTree tree;
    for (const off_t rest : {mebibyte / 2, mebibyte, mebibyte + 1}) {
        tree.makeFile("from", std::string(std::size_t{3} << 20, 'x'));
        const UniqueFd from = opened(tree.path("from")), to = opened(tree.path("to"));
        int asked = 0;
        const auto copied = copyContent(from.get(), to.get(),
                                        [&] { return ++asked != 2 || ::ftruncate(from.get(), rest) == 0; });
        EXPECT_TRUE(copied);
        struct stat status = {};
        ASSERT_EQ(::fstat(to.get(), &status), 0);
        EXPECT_EQ(status.st_size, rest);
        ::unlink(tree.path("to").c_str());
    }
}

// As they are in a folder that is given to another user before all in it is.
TEST(CopyTest, GivesNothingToWhatALinkLeadsTo) {
    const ScratchTree tree;
    const std::string others = tree.makeFile("others", "", 0600);
    ASSERT_EQ(::mkfifo(tree.path("fifo").c_str(), 0666), 0);
    ASSERT_EQ(::symlink(others.c_str(), tree.path("put there").c_str()), 0);
    struct stat status = {};
    ASSERT_EQ(::stat(tree.path("fifo").c_str(), &status), 0);
    status.st_mode |= 0777;
    const UniqueFd folder = opened(tree.root(), O_DIRECTORY);
    EXPECT_FALSE(keepAttributes(status, {folder.get(), "put there"}));
    EXPECT_TRUE(keepAttributes(status, {folder.get(), "fifo"}));
    ASSERT_EQ(::stat(tree.path("fifo").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0777U);
    ASSERT_EQ(::stat(others.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST(CopyTest, GivesAnotherGroupNoMoreThanEverybodyHas) {
    const ScratchTree tree;
    const UniqueFd from = opened(tree.path("from")), to = opened(tree.path("to"));
    ASSERT_EQ(::mkfifo(tree.path("fifo").c_str(), 0600), 0);
    for (const char* const name : {"to", "fifo"})
        ASSERT_TRUE(!isRoot() || ::lchown(tree.path(name).c_str(), ordinaryUser, ordinaryUser) == 0);
    struct stat status = {};
    ASSERT_EQ(::fstat(from.get(), &status), 0);
    status.st_gid = 1; // whom the user does not belong to
    status.st_mode = S_IFREG | 0674;
    const UniqueFd folder = opened(tree.root(), O_DIRECTORY);
    EXPECT_TRUE(runInChild([&] {
        if (isRoot())
            becomeOrdinaryUser();
        EXPECT_TRUE(keepAttributes(from.get(), status, to.get()));
        status.st_mode = S_IFIFO | 0674;
        EXPECT_TRUE(keepAttributes(status, {folder.get(), "fifo"}));
    }));
    for (const char* const name : {"to", "fifo"}) {
        ASSERT_EQ(::stat(tree.path(name).c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777U, 0644U) << name;
    }
}

TEST(CopyTest, KeepsRightsOfAProgramWhereTheyHadEffectAlone) {
    if (!isRoot())
        GTEST_SKIP() << "needs root to give a program rights";
    const unsigned char capabilities[20] = {0, 0, 0, 2, 0, 4}; // version 2: CAP_NET_BIND_SERVICE
    constexpr const char* attribute = "security.capability";
    const ScratchTree tree;
    tree.makeDirectory("mounted");
    for (const unsigned long flags : {0UL, static_cast<unsigned long>(MS_NOSUID)}) {
        const PrivateMount mounted("scratch", tree.path("mounted"), "tmpfs", flags);
        if (!mounted.whyMissing().empty())
            GTEST_SKIP() << mounted.whyMissing();
        const UniqueFd from = opened(tree.makeFile("mounted/from")), to = opened(tree.path("to"));
        if (::fsetxattr(from.get(), attribute, capabilities, sizeof capabilities, 0) != 0)
            GTEST_SKIP() << "files have no capabilities here";
        ASSERT_EQ(::fchmod(from.get(), 04755), 0);
        struct stat status = {};
        ASSERT_EQ(::fstat(from.get(), &status), 0);
        EXPECT_TRUE(keepAttributes(from.get(), status, to.get()));
        const bool hadEffect = flags == 0;
        EXPECT_EQ(::fgetxattr(to.get(), attribute, nullptr, 0) > 0, hadEffect);
        ASSERT_EQ(::fstat(to.get(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777U, hadEffect ? 04755U : 0755U);
        ::unlink(tree.path("to").c_str());
    }
}

} // namespace
} // namespace veilkeep::test
