#include "core/tracking/HalfDoneMove.h"

#include "core/base/UniqueFd.h"
#include "tests/support/ItemSnapshot.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <functional>

namespace veilkeep {
namespace {

using namespace test;

class HalfDoneMoveTest : public testing::Test {
protected:
    enum class Healed { Nothing, VisibleName, HiddenName }; // what is taken away

    struct Row {
        const char* name;
        std::function<void()> make;
        bool keepsHidden;
        Healed healed;
    };

    std::string make(const std::string& path, const std::string& content = "content") const {
        writeFile(path, content);
        return path;
    }
    void link(const std::string& path, const std::string& other) const {
        ASSERT_EQ(::link(path.c_str(), other.c_str()), 0);
    }
    void placeholder(const std::string& path) const { ASSERT_EQ(::mknod(path.c_str(), S_IFREG, 0), 0); }
    void placeholderDirectory(const std::string& path) const { ASSERT_EQ(::mkdir(path.c_str(), 0), 0); }

    void expectOutcome(const Row& row) const {
        const bool hiddenBefore = exists(m_hidden), visibleBefore = exists(m_visible);
        const auto before = snapshotOf(m_scratch.path("t"));
        const auto healed = healHalfDoneMove(row.keepsHidden ? m_hidden : m_visible);
        ASSERT_TRUE(healed) << healed.error().operation << " " << healed.error().systemError;
        EXPECT_EQ(*healed, row.healed != Healed::Nothing);
        EXPECT_EQ(exists(m_visible), visibleBefore && row.healed != Healed::VisibleName);
        EXPECT_EQ(exists(m_hidden), hiddenBefore && row.healed != Healed::HiddenName);
        if (row.healed == Healed::Nothing) {
            EXPECT_EQ(snapshotOf(m_scratch.path("t")), before);
        }
        const auto again = healHalfDoneMove(row.keepsHidden ? m_hidden : m_visible);
        EXPECT_TRUE(again && !*again);
    }

    const ScratchTree m_scratch;
    const std::string m_index = m_scratch.path("t/.SYS_INDEX");
    const std::string m_visible = m_scratch.path("t/report.txt");
    const std::string m_hidden = m_index + "/troper.txt";
};

TEST_F(HalfDoneMoveTest, TakesLeftoversAwayAndNothingElse) {
    const auto both = [&] { link(make(m_visible), m_hidden); };
    const auto symbolicLink = [&] {
        ASSERT_EQ(::symlink("nowhere", m_visible.c_str()), 0);
        link(m_visible, m_hidden);
    };
    const auto fileAndDirectory = [&] {
        make(m_visible);
        placeholderDirectory(m_hidden);
    };
    const auto changedAfterItsBirth = [&](const std::string& path) {
        const timespec times[2] = {{1, 0}, {1, 0}};
        placeholder(path);
        ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
    };
    const Row rows[] = {
        {"two names, visible stays", both, false, Healed::HiddenName},
        {"two names, hidden stays", both, true, Healed::VisibleName},
        {"a link of two names", symbolicLink, false, Healed::HiddenName},
        {"hide cut off", [&] { make(m_visible), placeholder(m_hidden); }, false, Healed::HiddenName},
        {"unhide cut off", [&] { make(m_hidden), placeholder(m_visible); }, true, Healed::VisibleName},
        {"directory's placeholder", fileAndDirectory, false, Healed::HiddenName},
        {"the placeholder is asked to stay", fileAndDirectory, true, Healed::Nothing},
        {"two items", [&] { make(m_visible), make(m_hidden); }, false, Healed::Nothing},
        {"one name", [&] { make(m_visible); }, false, Healed::Nothing},
        {"kept one missing", [&] { make(m_visible); }, true, Healed::Nothing},
        {"placeholder alone", [&] { placeholder(m_hidden); }, false, Healed::Nothing},
        {"two placeholders", [&] { placeholder(m_visible), placeholder(m_hidden); }, true, Healed::Nothing},
        {"closed file with content", [&] { make(m_visible), ::chmod(make(m_hidden).c_str(), 0); }, false,
         Healed::Nothing},
        {"empty file that others may read",
         [&] { make(m_visible), ::chmod(make(m_hidden, {}).c_str(), 0444); }, false, Healed::Nothing},
        {"closed file that was changed", [&] { make(m_visible), changedAfterItsBirth(m_hidden); }, false,
         Healed::Nothing},
        {"closed file with a name elsewhere",
         [&] { make(m_visible), placeholder(m_hidden), link(m_hidden, m_scratch.path("t/other")); }, false,
         Healed::Nothing},
        {"closed directory with something in it", [&] { fileAndDirectory(), make(m_hidden + "/in it"); },
         false, Healed::Nothing},
        {"hidden directory is a link",
         [&] {
             both();
             ASSERT_EQ(::rename(m_index.c_str(), m_scratch.path("t/elsewhere").c_str()), 0);
             ASSERT_EQ(::symlink("elsewhere", m_index.c_str()), 0);
         },
         false, Healed::Nothing},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ASSERT_EQ(::mkdir(m_scratch.makeDirectory("t").append("/.SYS_INDEX").c_str(), 0755), 0);
        row.make();
        expectOutcome(row);
        std::filesystem::remove_all(m_scratch.path("t"));
    }
}

TEST_F(HalfDoneMoveTest, WaitsForTheLock) {
    m_scratch.makeDirectory("t/.SYS_INDEX");
    link(make(m_visible), m_hidden);
    const UniqueFd lock(::open(m_index.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ASSERT_EQ(::flock(lock.get(), LOCK_EX), 0);
    const auto healed = healHalfDoneMove(m_visible, std::chrono::milliseconds(1));
    ASSERT_FALSE(healed);
    EXPECT_EQ(healed.error(), Error::system("flock", m_index, EWOULDBLOCK));
    EXPECT_TRUE(exists(m_visible) && exists(m_hidden));
}

// The directory seen as its own ".SYS_INDEX": the two paths of a name that reads the same both ways are one.
TEST_F(HalfDoneMoveTest, NeverTakesTheOnlyName) {
    m_scratch.makeDirectory("t/.SYS_INDEX");
    const PrivateMount mount(m_scratch.path("t"), m_index, nullptr, MS_BIND);
    if (!mount.whyMissing().empty())
        GTEST_SKIP() << mount.whyMissing();
    const std::string path = make(m_scratch.path("t/abba"));
    link(path, m_scratch.path("other"));
    ASSERT_TRUE(exists(m_index + "/abba"));
    const auto healed = healHalfDoneMove(path);
    EXPECT_TRUE(healed && !*healed);
    EXPECT_TRUE(exists(path));
}

} // namespace
} // namespace veilkeep
