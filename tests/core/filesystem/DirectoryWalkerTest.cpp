#include "core/filesystem/DirectoryWalker.h"

#include "core/base/PathText.h"
#include "core/base/UniqueFd.h"
#include "core/filesystem/PendingDirectories.h"
#include "tests/support/OpenDescriptors.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/RunInChild.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace veilkeep {
namespace {

using namespace test;
using End = DirectoryWalker::End;

// Keeps all that a walk gives and goes into each directory.
class Collector : public DirectoryVisitor {
public:
    void visit(OpenDirectory& directory) override {
        const std::string path = directory.path();
        while (const DirectoryEntry* entry = directory.next()) {
            const std::lock_guard lock(m_mutex);
            entries.emplace(joinPath(path, entry->name), *entry)->second.name = {};
            if (entry->type == DT_DIR)
                directory.descend();
            if (atEntry)
                atEntry(joinPath(path, entry->name));
        }
    }

    void unreadable(const std::string& path, int systemError) override {
        const std::lock_guard lock(m_mutex);
        errors.emplace(path, systemError);
    }

    std::multimap<std::string, DirectoryEntry> entries;
    std::multimap<std::string, int> errors;
    std::function<void(const std::string&)> atEntry;

private:
    std::mutex m_mutex;
};

class DirectoryWalkerTest : public testing::Test {
protected:
    void TearDown() override { EXPECT_EQ(openDescriptors(), m_descriptorsBefore); }

    const ScratchTree m_scratch;
    const std::string m_tree = m_scratch.makeDirectory("tree");
    // The table keeps a descriptor open from its first use on.
    const std::ptrdiff_t m_descriptorsBefore = (MountTable::reread(), openDescriptors());
};

// Directories one in the other, made and removed through descriptors: their path is longer than a call takes.
class DeepDirectory {
public:
    DeepDirectory(const std::string& top, std::string name, int depth) : m_name(std::move(name)) {
        m_levels.emplace_back(::open(top.c_str(), O_DIRECTORY | O_CLOEXEC));
        for (int level = 0; level < depth; ++level) {
            ::mkdirat(m_levels.back().get(), m_name.c_str(), 0755);
            m_levels.emplace_back(::openat(m_levels.back().get(), m_name.c_str(), O_DIRECTORY | O_CLOEXEC));
        }
    }
    ~DeepDirectory() {
        while (m_levels.size() > 1) {
            m_levels.pop_back();
            ::unlinkat(m_levels.back().get(), m_name.c_str(), AT_REMOVEDIR);
        }
    }

    int deepest() const { return m_levels.back().get(); }

private:
    std::string m_name;
    std::vector<UniqueFd> m_levels;
};

TEST_F(DirectoryWalkerTest, GivesEachEntryOnceWithTypeAndInode) {
    m_scratch.makeFile("tree/a/file");
    m_scratch.makeFile("tree/a/b/\xff\xfe\n");
    m_scratch.makeFile("tree/a/b/..dots");
    m_scratch.makeDirectory("tree/empty");
    ASSERT_EQ(::symlink("..", m_scratch.path("tree/a/loop").c_str()), 0);
    ASSERT_EQ(::symlink(m_scratch.root().c_str(), m_scratch.path("tree/a/b/out").c_str()), 0);
    ASSERT_EQ(::symlink("nowhere", m_scratch.path("tree/dangling").c_str()), 0);
    ASSERT_EQ(::mkfifo(m_scratch.path("tree/fifo").c_str(), 0600), 0);
    ASSERT_EQ(::mknod(m_scratch.path("tree/socket").c_str(), S_IFSOCK | 0600, 0), 0);
    const std::map<std::string, unsigned char> expected = {
        {"a", DT_DIR},          {"a/file", DT_REG}, {"a/b", DT_DIR},    {"a/b/\xff\xfe\n", DT_REG},
        {"a/b/..dots", DT_REG}, {"empty", DT_DIR},  {"a/loop", DT_LNK}, {"a/b/out", DT_LNK},
        {"dangling", DT_LNK},   {"fifo", DT_FIFO},  {"socket", DT_SOCK}};
    for (const unsigned int threads : {1U, 2U, 8U}) {
        Collector collector;
        DirectoryWalker walker({.stayOnVolume = false, .threads = threads});
        ASSERT_EQ(*walker.walk(m_tree, collector), End::Complete);
        EXPECT_EQ(collector.entries.size(), expected.size());
        for (const auto& [path, entry] : collector.entries) {
            struct stat status = {};
            ASSERT_EQ(::lstat(joinPath(m_tree, path).c_str(), &status), 0) << path;
            EXPECT_EQ(entry.inode, status.st_ino) << path;
            ASSERT_TRUE(expected.contains(path)) << path;
            EXPECT_EQ(entry.type, expected.at(path)) << path;
        }
        EXPECT_TRUE(collector.errors.empty());
    }
}

TEST_F(DirectoryWalkerTest, ReachesWhatNoPathReaches) {
    const DeepDirectory deep(m_tree, "directory", 510);
    ASSERT_EQ(::mknodat(deep.deepest(), "file", S_IFREG | 0600, 0), 0);
    const std::ptrdiff_t before = openDescriptors();
    Collector collector;
    EXPECT_EQ(*DirectoryWalker().walk(m_tree, collector), End::Complete);
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_TRUE(collector.errors.empty());
    ASSERT_EQ(collector.entries.size(), 511U);
    const std::string longest = collector.entries.rbegin()->first;
    EXPECT_EQ(longest.size(), 510 * 10 + 4U);
    EXPECT_TRUE(longest.ends_with("directory/directory/file"));
    ::unlinkat(deep.deepest(), "file", 0);
}

TEST(WalkPlace, LetsGoOfALongChainWithoutRecursion) {
    auto place = std::make_shared<WalkPlace>(nullptr, "");
    for (int depth = 0; depth < 500'000; ++depth)
        place = std::make_shared<WalkPlace>(std::move(place), "d");
    EXPECT_EQ(place->path().size(), 500'000 * 2 - 1U);
    const std::weak_ptr<WalkPlace> parent = place->parent;
    place.reset();
    EXPECT_TRUE(parent.expired());
}

TEST_F(DirectoryWalkerTest, DoesWithFewDescriptors) {
    constexpr int depth = 100;
    std::string path = "tree";
    for (int level = 0; level < depth; ++level) { // other names at each level, for another order of entries
        for (const char* sibling : {"/left", "/right"})
            m_scratch.makeDirectory(path + sibling + std::to_string(level) + "/leaf");
        path += "/middle" + std::to_string(level);
    }
    EXPECT_TRUE(runInChild([&] {
        const rlimit few = {40, 40};
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
        Collector collector;
        EXPECT_EQ(*DirectoryWalker().walk(m_tree, collector), End::Complete);
        EXPECT_TRUE(collector.errors.empty());
        EXPECT_EQ(collector.entries.size(), 5 * depth - 1U);
    }));
}

TEST_F(DirectoryWalkerTest, TellsOfRunningOutOfDescriptors) {
    m_scratch.makeDirectory("tree/a/b/c");
    EXPECT_TRUE(runInChild([&] {
        const DirectoryWalker::Options one{.stayOnVolume = false, .threads = 1};
        Collector enough, tooFew, moved;
        EXPECT_EQ(*DirectoryWalker(one).walk(m_tree, enough), End::Complete);
        EXPECT_EQ(enough.entries.size(), 3U);

        const int lowest = UniqueFd(::dup(STDIN_FILENO)).get();
        const auto rootAndOne = static_cast<rlim_t>(lowest) + 2; // "a" is opened again to reach "b"
        const rlimit few = {rootAndOne, rootAndOne};
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
        EXPECT_EQ(*DirectoryWalker(one).walk(m_tree, tooFew), End::Complete);
        EXPECT_EQ(tooFew.errors, (std::multimap<std::string, int>{{"a/b", EMFILE}}));
        EXPECT_EQ(tooFew.entries.size(), 2U);

        moved.atEntry = [&](const std::string& path) {
            if (path == "a/b")
                ::rename(joinPath(m_tree, "a").c_str(), m_scratch.path("elsewhere").c_str());
        };
        EXPECT_EQ(*DirectoryWalker(one).walk(m_tree, moved), End::Complete);
        EXPECT_TRUE(moved.errors.empty());
    }));
}

// What is done to a directory between the moment it was listed and the moment it would be opened.
TEST_F(DirectoryWalkerTest, PassesOverWhatIsReplacedMeanwhile) {
    const std::string victim = joinPath(m_tree, "victim");
    const std::string bait = m_scratch.makeDirectory("bait");
    m_scratch.makeFile("bait/secret");
    const std::pair<const char*, std::function<int()>> rows[] = {
        {"removed", [&] { return ::rmdir(victim.c_str()); }},
        {"a file", [&] { return ::rmdir(victim.c_str()) + ::mknod(victim.c_str(), S_IFREG | 0600, 0); }},
        {"a link", [&] { return ::rmdir(victim.c_str()) + ::symlink(bait.c_str(), victim.c_str()); }},
        {"a FIFO", [&] { return ::rmdir(victim.c_str()) + ::mkfifo(victim.c_str(), 0600); }},
    };
    for (const auto& [name, replace] : rows) {
        std::filesystem::remove(victim);
        m_scratch.makeDirectory("tree/victim");
        Collector collector;
        collector.atEntry = [&](const std::string&) { ASSERT_EQ(replace(), 0) << name; };
        EXPECT_EQ(*DirectoryWalker().walk(m_tree, collector), End::Complete) << name;
        EXPECT_EQ(collector.entries.size(), 1U) << name;
        EXPECT_TRUE(collector.errors.empty()) << name;
    }
}

TEST_F(DirectoryWalkerTest, StopsAtBoundaries) {
    m_scratch.makeFile("tree/plain/proc/file");
    const std::string proc = m_scratch.makeDirectory("tree/proc");
    const std::string memory = m_scratch.makeDirectory("tree/memory");
    const PrivateMount processes("p", proc, "proc"), volume("t", memory, "tmpfs");
    if (!processes.whyMissing().empty())
        GTEST_SKIP() << processes.whyMissing();
    ASSERT_EQ(volume.whyMissing(), "");
    m_scratch.makeFile("tree/memory/file");
    const std::size_t all = 6;
    Collector across, within, inside;
    EXPECT_EQ(*DirectoryWalker().walk(m_tree, across), End::Complete);
    EXPECT_EQ(across.entries.size(), all);
    EXPECT_EQ(*DirectoryWalker({.stayOnVolume = true, .threads = 0}).walk(m_tree, within), End::Complete);
    EXPECT_EQ(within.entries.size(), all - 1);
    EXPECT_EQ(*DirectoryWalker().walk(proc, inside), End::Complete);
    EXPECT_TRUE(inside.entries.empty());
}

TEST_F(DirectoryWalkerTest, AsksForTypesThatTheFileSystemDoesNotList) {
    if (const std::string why = enterPrivateMounts(); !why.empty())
        GTEST_SKIP() << why;
    const std::string image = m_scratch.path("image");
    const std::string make = "PATH=$PATH:/sbin:/usr/sbin; exec >/dev/null 2>&1; truncate -s 8M " + image +
                             " && mkfs.ext4 -q -O ^filetype " + image + " && mount -o loop " + image + " " +
                             m_tree;
    if (std::system(make.c_str()) != 0)
        GTEST_SKIP() << "failed: " << make;
    m_scratch.makeFile("tree/a/b/file");
    Collector collector;
    EXPECT_EQ(*DirectoryWalker().walk(m_tree, collector), End::Complete);
    const auto file = collector.entries.find("a/b/file");
    ASSERT_NE(file, collector.entries.end());
    EXPECT_EQ(file->second.type, DT_REG);
    ::umount2(m_tree.c_str(), MNT_DETACH);
}

} // namespace
} // namespace veilkeep
