#include "core/storage/SafeFile.h"

#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <set>

namespace veilkeep {
namespace {

using namespace std::chrono_literals;
using test::readFile;
using test::ScratchTree;
using Saved = SafeFile::Saved;

constexpr TimePoint noon{std::chrono::sys_days{std::chrono::year{2026} / 1 / 31} + 12h};

class SafeFileTest : public ::testing::Test {
protected:
    SafeFile open(std::string_view name = "d/list") {
        return SafeFile(tree.path(name), {.maximumSize = 100, .clock = [this] { return now; }});
    }

    static void expectWritten(SafeFile& file, std::string_view bytes) {
        const auto saved = file.save(bytes);
        ASSERT_TRUE(saved) << saved.error().operation << " " << saved.error().systemError;
        EXPECT_EQ(*saved, Saved::Written);
    }

    std::set<std::string> names(std::string_view directory = "d") const {
        return test::namesIn(tree.path(directory));
    }

    static std::vector<std::string> contents(const std::vector<std::string>& paths) {
        std::vector<std::string> all;
        for (const std::string& path : paths)
            all.push_back(readFile(path));
        return all;
    }

    ScratchTree tree;
    TimePoint now = noon;
};

using Contents = std::vector<std::string>;

TEST_F(SafeFileTest, SavesOnlyWhatChanged) {
    SafeFile file = open("new/list");
    EXPECT_EQ(file.read().error().systemError, ENOENT);
    expectWritten(file, "one");
    EXPECT_EQ(std::filesystem::status(tree.path("new")).permissions(), std::filesystem::perms::owner_all);
    EXPECT_EQ(*file.save("one"), Saved::Unchanged);
    expectWritten(file, "two");
    expectWritten(file, "one");
    SafeFile another = open("new/list");
    EXPECT_FALSE(another.isAsLeft()) << "never looked at";
    ASSERT_EQ(*another.read(), "one");
    EXPECT_TRUE(another.isAsLeft());
    const auto before = fileStamp(another.path());
    EXPECT_EQ(*another.save("one"), Saved::Unchanged);
    EXPECT_EQ(*fileStamp(another.path()), *before);
    std::filesystem::remove(another.path());
    EXPECT_FALSE(another.isAsLeft());
    expectWritten(another, "one"); // the content is the same, but the file was gone
    EXPECT_EQ(readFile(another.path()), "one");
}

TEST_F(SafeFileTest, KeepsWhatItHasNotReadUnderADatedName) {
    const std::string dated = "list.damaged-2026-01-31T12-00-00Z";
    const struct {
        const char* name;
        std::string content;
        void (*look)(SafeFile&);
        bool isKept;
    } rows[] = {
        {"read", "old", [](SafeFile& file) { EXPECT_TRUE(file.read()); }, false},
        {"damaged", "old",
         [](SafeFile& file) {
             EXPECT_TRUE(file.read());
             file.contentIsDamaged();
         },
         true},
        {"damaged and the same", "new",
         [](SafeFile& file) {
             EXPECT_TRUE(file.read());
             file.contentIsDamaged();
         },
         true},
        {"too large", std::string(101, 'x'), [](SafeFile& file) { EXPECT_FALSE(file.read()); }, true},
        {"never read", "old", [](SafeFile&) {}, true},
        {"changed since", "old",
         [](SafeFile& file) {
             EXPECT_TRUE(file.read());
             test::writeFile(file.path(), "another's");
         },
         true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::filesystem::remove_all(tree.path("d"));
        tree.makeFile("d/list", row.content);
        SafeFile file = open();
        row.look(file);
        const std::string before = readFile(file.path());
        expectWritten(file, "new");
        EXPECT_EQ(readFile(file.path()), "new");
        EXPECT_EQ(names().count(dated), row.isKept ? 1U : 0U);
        EXPECT_EQ(file.earlierCopies().size(), row.isKept ? 0U : 1U);
        if (row.isKept) {
            EXPECT_EQ(readFile(tree.path("d/" + dated)), before);
        }
        expectWritten(file, "newer");
        EXPECT_EQ(names().count(dated + "-2"), 0U);
    }
}

TEST_F(SafeFileTest, CountsUpWhereADatedNameIsTaken) {
    const std::string dated = "d/list.damaged-2026-01-31T12-00-00Z";
    tree.makeFile(dated, "first");
    ASSERT_EQ(::symlink("nowhere", tree.path(dated + "-2").c_str()), 0);
    tree.makeFile("d/list", "third");
    SafeFile file = open();
    expectWritten(file, "new");
    EXPECT_EQ(readFile(tree.path(dated)), "first");
    EXPECT_EQ(readFile(tree.path(dated + "-3")), "third");
}

TEST_F(SafeFileTest, KeepsThreeEarlierStatesAnHourApart) {
    SafeFile file = open();
    expectWritten(file, "0");
    const std::tuple<std::chrono::minutes, const char*, Contents> rows[] = {
        {0min, "1", {"0"}},
        {59min, "2", {"0"}}, // too soon
        {60min, "3", {"2", "0"}},
        {500min, "3", {"2", "0"}}, // nothing changed
        {500min, "4", {"3", "2", "0"}},
        {600min, "5", {"4", "3", "2"}},
        {100min, "6", {"2", "4", "3"}}, // the clock was wrong, or is: 100 min is within the hour after 60
        {200min, "7", {"6", "2", "4"}},
        {300min, "8", {"7", "6", "2"}},
    };
    for (const auto& [time, bytes, copies] : rows) {
        now = noon + time;
        ASSERT_TRUE(file.save(bytes)) << bytes;
        EXPECT_EQ(contents(file.earlierCopies()), copies) << bytes;
    }
    EXPECT_EQ(file.earlierCopies().front(), tree.path("d/list.earlier-2026-01-31T17-00-00Z"));
    EXPECT_EQ(names().size(), 4U);
}

TEST_F(SafeFileTest, LeavesOtherNamesAlone) {
    const char* others[] = {"d/list.earlier-", "d/list.earlier-2026-01-31T12-00-00Zx",
                            "d/list.earlier-2026-01-31 12-00-00Z", "d/lists.earlier-2020-01-31T12-00-00Z"};
    for (const char* other : others)
        tree.makeFile(other, "not ours");
    SafeFile file = open();
    for (const char* bytes : {"1", "2", "3", "4", "5", "6"}) {
        expectWritten(file, bytes);
        now += 2h;
    }
    EXPECT_EQ(contents(file.earlierCopies()), (Contents{"5", "4", "3"}));
    for (const char* other : others)
        EXPECT_TRUE(test::exists(tree.path(other))) << other;
}

TEST_F(SafeFileTest, FollowsLinksToAnotherPlace) {
    const auto link = [&](const std::string& target, const char* name) {
        ASSERT_EQ(::symlink(target.c_str(), tree.path(name).c_str()), 0);
    };
    tree.makeFile("real/list", "old", 0644);
    tree.makeDirectory("d");
    link("../d/absolute", "real/chain");
    link("../real/chain", "d/list");
    link(tree.path("real/list"), "d/absolute");
    link("../real/fresh", "d/dangling");
    SafeFile file = open(), fresh = open("d/dangling");
    ASSERT_EQ(*file.read(), "old");
    expectWritten(file, "new");
    expectWritten(fresh, "first");
    EXPECT_EQ(readFile(tree.path("real/list")), "new");
    EXPECT_EQ(readFile(tree.path("real/fresh")), "first");
    EXPECT_EQ(test::modeOf(tree.path("real/list")), 0600U);
    EXPECT_EQ(names(), (std::set<std::string>{"absolute", "dangling", "list"}));
    EXPECT_EQ(contents(file.earlierCopies()), Contents{"old"});
    for (const char* name : {"d/list", "d/absolute", "d/dangling", "real/chain"})
        EXPECT_TRUE(std::filesystem::is_symlink(tree.path(name))) << name;
}

} // namespace
} // namespace veilkeep
