#include "tests/support/FailingCall.h"
#include "tests/support/Rounds.h"
#include "tests/worker/AdministratorFixture.h"

#include "worker/FileAccessAs.h"
#include "worker/ItemMover.h"

#include <sys/syscall.h>

#include <atomic>
#include <filesystem>
#include <map>
#include <thread>

namespace veilkeep::test {
namespace {

// Something of the user's in the way to the item, and the link or directory that he puts in its place.
struct Part {
    const char* name;
    std::string place, decoy;
};

// While root moves the user's item, the user swaps parts of its path for links to what is not his.
class RootAttackTest : public AdministratorFixture {
protected:
    void SetUp() override {
        AdministratorFixture::SetUp();
        if (IsSkipped())
            return;
        ::setenv("PKEXEC_UID", std::to_string(ordinaryUser).c_str(), 1);
        for (const std::string top : {"t", "bait"}) {
            m_tree.makeFile(top + "/a/b/c/item.txt", top, 0600);
            m_tree.makeFile(top + "/a/b/c/" + (top == "t" ? "roots own" : ".SYS_INDEX") + "/meti.txt", "x",
                            0600);
        }
        for (const std::string path : {"t", "t/a", "t/a/b", "t/a/b/c", "t/a/b/c/item.txt"})
            ASSERT_EQ(::lchown(m_tree.path(path).c_str(), ordinaryUser, ordinaryUser), 0);
        ASSERT_EQ(::chmod(m_tree.path("t/a/b/c/roots own").c_str(), 0700), 0);
    }

    // Each renaming is one step, so that there is always something in the place or on the way to it.
    static void swap(const Part& part) {
        const char* const place = part.place.c_str();
        const char* const decoy = part.decoy.c_str();
        if (::renameat2(AT_FDCWD, place, AT_FDCWD, decoy, RENAME_EXCHANGE) != 0 &&
            ::renameat2(AT_FDCWD, place, AT_FDCWD, decoy, RENAME_NOREPLACE) != 0)
            ::renameat2(AT_FDCWD, decoy, AT_FDCWD, place, RENAME_NOREPLACE);
    }

    void attack(const Part& part, const std::function<void()>& moves) {
        std::atomic<bool> done = false;
        std::atomic<int> swaps = 0;
        std::jthread rival([&] {
            const FileAccessAs user(ordinaryUser, ordinaryUser, FileAccessAs::Rights::OfThatUser);
            for (; !done; ++swaps)
                swap(part);
        });
        while (swaps == 0)
            std::this_thread::yield();
        moves();
        done = true;
        rival.join();
        m_swaps += swaps;
    }

    void count(const MoveAnswer& answer) { ++m_answers[static_cast<int>(answer.error)]; }

    // One after the other, as far as the rival lets it.
    void moveTimes(int times) {
        const User user{ordinaryUser, ordinaryUser, {}};
        for (int round = 0; round < times; ++round) {
            count(hideItem(m_path, &user));
            count(unhideItem(hiddenPathOf(m_path), &user));
        }
    }

    std::vector<Part> parts() {
        std::vector<Part> found;
        const auto add = [&](const char* name, const std::string& place, const std::string& target) {
            const std::string decoy = m_tree.path(place + " decoy");
            ASSERT_EQ(::symlink(m_tree.path(target).c_str(), decoy.c_str()), 0);
            ASSERT_EQ(::lchown(decoy.c_str(), ordinaryUser, ordinaryUser), 0);
            found.push_back({name, m_tree.path(place), decoy});
        };
        add("outer folder", "t/a", "bait/a");
        add("middle folder", "t/a/b", "bait/a/b");
        add("inner folder", "t/a/b/c", "bait/a/b/c");
        add("item", "t/a/b/c/item.txt", "bait/a/b/c/item.txt");
        add("hidden directory", "t/a/b/c/.SYS_INDEX", "bait/a/b/c/.SYS_INDEX");
        found.push_back(
            {"directory of root's", m_tree.path("t/a/b/c/.SYS_INDEX"), m_tree.path("t/a/b/c/roots own")});
        return found;
    }

    // Everything that was there, by inode, wherever below the folder it is now.
    struct Possession {
        std::string path;
        ItemState state;
    };
    using Possessions = std::map<std::uint64_t, Possession>;

    Possessions possessions() const {
        Possessions found;
        for (auto& [path, state] : snapshotOf(m_tree.path("t"))) {
            state.modified = 0; // directories change as items come and go
            found[state.inode] = {m_tree.path("t/" + path), state};
        }
        return found;
    }

    void expectNothingLost(const Possessions& before) const {
        const Possessions after = possessions();
        for (const auto& [inode, was] : before) {
            const auto now = after.find(inode);
            ASSERT_NE(now, after.end()) << was.path << " is lost";
            EXPECT_EQ(now->second.state, was.state) << was.path;
        }
        for (const auto& [inode, now] : after) {
            if (before.count(inode) == 0) {
                EXPECT_TRUE(lastPathComponent(now.path).starts_with(".SYS_INDEX")) << now.path;
                EXPECT_EQ(now.state.owner, ordinaryUser) << now.path;
            }
        }
    }

    void putBack(const Possessions& before) const {
        for (const auto& [path, state] : m_inOrder) {
            const std::string now = possessions().at(state.inode).path;
            if (now != path &&
                ::renameat2(AT_FDCWD, now.c_str(), AT_FDCWD, path.c_str(), RENAME_EXCHANGE) != 0) {
                ASSERT_EQ(::rename(now.c_str(), path.c_str()), 0) << path;
            }
        }
        ::rmdir(hiddenDirectoryBeside(m_path).c_str());
        expectNothingLost(before);
    }

    void report(const char* what) {
        std::printf("%s: %d swaps;", what, m_swaps);
        for (const auto& [number, times] : m_answers)
            std::printf(" %d x answer %d", times, number);
        std::printf("\n");
        EXPECT_GT(m_answers[0], 0) << "nothing was moved at all";
        m_answers.clear();
        m_swaps = 0;
    }

    void attackEveryPart(const std::function<void()>& moves) {
        const auto attacked = parts();
        const auto bait = snapshotOf(m_tree.path("bait"));
        const auto before = possessions();
        for (const auto& [inode, possession] : before)
            m_inOrder[possession.path] = possession.state;
        for (const Part& part : attacked) {
            SCOPED_TRACE(part.name);
            attack(part, moves);
            report(part.name);
            EXPECT_EQ(snapshotOf(m_tree.path("bait")), bait);
            expectNothingLost(before);
            putBack(before);
            if (HasFatalFailure())
                return;
        }
    }

    const std::string m_path = m_tree.path("t/a/b/c/item.txt");
    std::map<std::string, ItemState> m_inOrder; // each before what lies in it
    std::map<int, int> m_answers;
    int m_swaps = 0;
};

TEST_F(RootAttackTest, NothingOutsideTheFolderIsTouched) {
    attackEveryPart([&] { moveTimes(rounds(5'000, 50'000)); });
}

TEST_F(RootAttackTest, WithoutTheCallThatRefusesLinks) {
    attackEveryPart([&] {
        std::jthread([&] {
            ASSERT_TRUE(failCall(SYS_openat2, ENOSYS));
            moveTimes(rounds(1'700, 20'000));
        }).join();
    });
}

TEST_F(RootAttackTest, WholeWorkers) {
    attackEveryPart([&] {
        for (int round = 0; round < rounds(40, 500); ++round) {
            for (const char* const operation : {"-hide", "-unhide"}) {
                const ProgramRun run = administrate(
                    operation, operation == std::string_view("-hide") ? m_path : hiddenPathOf(m_path));
                EXPECT_EQ(run.errors, "");
                ++m_answers[run.exitStatus == 1 ? 0 : std::atoi(run.output.substr(7).c_str())];
            }
        }
    });
    EXPECT_FALSE(exists(m_inProgressFolder));
}

} // namespace
} // namespace veilkeep::test
