#include "tests/support/FailingCall.h"
#include "tests/support/Rounds.h"
#include "tests/worker/AdministratorFixture.h"

#include "worker/FileAccessAs.h"
#include "worker/ItemMover.h"
#include "worker/RescueMove.h"

#include <sys/syscall.h>

#include <atomic>
#include <map>
#include <random>
#include <thread>

namespace veilkeep::test {
namespace {

// Something of the user's in the way to the item, and the link or directory that he puts in its place.
struct Part {
    std::string name, place, decoy;
};

// While root moves the user's item, the user swaps parts of its path for links to what is not his.
class RootAttackTest : public AdministratorFixture {
protected:
    void SetUp() override {
        AdministratorFixture::SetUp();
        if (IsSkipped())
            return;
        ::setenv("PKEXEC_UID", std::to_string(ordinaryUser).c_str(), 1);
        m_tree.makeFile("t/a/b/c/item.txt", "mine", 0600);
        m_tree.makeFile("t/a/b/c/roots own/meti.txt", "secret", 0600);
        // Whoever is led to them finds something to hide in the one and to bring back in the other.
        m_tree.makeFile("bait/hide/a/b/c/item.txt", "bait", 0600);
        m_tree.makeFile("bait/hide/a/b/c/.SYS_INDEX/other", "bait", 0600);
        m_tree.makeFile("bait/show/a/b/c/.SYS_INDEX/meti.txt", "bait", 0600);
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
        m_swaps = 0;
        {
            const std::jthread rival([&](const std::stop_token& stop) {
                const FileAccessAs user(ordinaryUser, ordinaryUser, FileAccessAs::Rights::OfThatUser);
                std::minstd_rand dice; // else the two would fall into step
                for (; !stop.stop_requested(); ++m_swaps) {
                    swap(part);
                    for (auto turns = dice() % 2000; turns > 0 && !stop.stop_requested(); --turns)
                        continue;
                }
            });
            while (m_swaps == 0)
                std::this_thread::yield();
            moves();
        }
    }

    // After a refusal only another state of things is worth another try.
    void count(int answer) {
        ++m_answers[answer];
        const int seen = m_swaps;
        while (answer != 0 && m_swaps == seen)
            std::this_thread::yield();
    }

    // One after the other, as far as the rival lets it.
    void moveTimes(int times) {
        const User user{ordinaryUser, ordinaryUser, {}};
        for (int round = 0; round < times; ++round) {
            count(static_cast<int>(hideItem(m_path, &user).error));
            count(static_cast<int>(unhideItem(hiddenPathOf(m_path), &user).error));
        }
    }

    std::vector<Part> parts() const {
        std::vector<Part> found;
        const auto add = [&](const std::string& relative, const std::string& bait) {
            const std::string place = m_tree.path("t/" + relative), decoy = place + " " + bait;
            const std::string target = m_tree.path("bait/" + bait + "/" + relative);
            ASSERT_EQ(::symlink(target.c_str(), decoy.c_str()), 0);
            ASSERT_EQ(::lchown(decoy.c_str(), ordinaryUser, ordinaryUser), 0);
            found.push_back({relative + " for " + bait, place, decoy});
        };
        for (const char* const relative : {"a", "a/b", "a/b/c", "a/b/c/.SYS_INDEX"}) {
            add(relative, "hide");
            add(relative, "show");
        }
        add("a/b/c/item.txt", "hide");
        const std::string folder = m_tree.path("t/a/b/c");
        found.push_back({"directory of root's", folder + "/.SYS_INDEX", folder + "/roots own"});
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
                EXPECT_TRUE(S_ISDIR(now.state.mode)) << "not a .SYS_INDEX: " << now.path;
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

    void report(const std::string& what) {
        std::printf("%s: %d swaps;", what.c_str(), m_swaps.load());
        for (const auto& [number, times] : m_answers)
            std::printf(" %d x answer %d", times, number);
        std::printf("\n");
        m_moved += m_answers[0];
        m_answers.clear();
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
        EXPECT_GT(m_moved, 0) << "nothing was moved at all";
    }

    const std::string m_path = m_tree.path("t/a/b/c/item.txt");
    std::map<std::string, ItemState> m_inOrder; // each before what lies in it
    std::map<int, int> m_answers;
    std::atomic<int> m_swaps = 0;
    int m_moved = 0;
};

TEST_F(RootAttackTest, NothingOutsideTheFolderIsTouched) {
    attackEveryPart([&] { moveTimes(rounds(1'000, 5'000)); });
}

TEST_F(RootAttackTest, WithoutTheCallThatRefusesLinks) {
    attackEveryPart([&] {
        std::jthread([&] {
            ASSERT_TRUE(failCall(SYS_openat2, ENOSYS));
            moveTimes(rounds(200, 2'000));
        }).join();
    });
}

// Root does it for himself, with the user's folders.
TEST_F(RootAttackTest, RescuesWithoutAList) {
    attackEveryPart([&] {
        const User user{ordinaryUser, ordinaryUser, {}};
        for (int round = 0; round < rounds(100, 2'000); ++round) {
            count(static_cast<int>(hideItem(m_path, &user).error));
            count(static_cast<int>(rescueItem(hiddenPathOf(m_path)).error));
        }
    });
}

TEST_F(RootAttackTest, WholeWorkers) {
    attackEveryPart([&] {
        for (int round = 0; round < rounds(12, 100); ++round) {
            for (const char* const operation : {"-hide", "-unhide"}) {
                const ProgramRun run = administrate(
                    operation, operation == std::string_view("-hide") ? m_path : hiddenPathOf(m_path));
                EXPECT_EQ(run.errors, "");
                count(run.exitStatus == 1 ? 0 : std::atoi(run.output.substr(7).c_str()));
            }
        }
    });
    EXPECT_FALSE(exists(m_inProgressFolder));
}

} // namespace
} // namespace veilkeep::test
