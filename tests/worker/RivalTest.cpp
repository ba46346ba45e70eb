#include "tests/support/FailingCall.h"
#include "tests/support/Rounds.h"
#include "tests/support/RunInChild.h"
#include "tests/worker/WorkerFixture.h"

#include "core/tracking/HalfDoneMove.h"
#include "worker/ItemMover.h"

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <initializer_list>
#include <latch>
#include <map>
#include <thread>

namespace veilkeep::test {
namespace {

class RivalTest : public WorkerFixture {};

// Workers that hide and bring back in one directory remove ".SYS_INDEX" under each other's feet.
TEST_F(RivalTest, WorkersInOneDirectoryDoNotDisturbEachOther) {
    m_tree.makeDirectory("t");
    std::atomic<int> failures = 0;
    const int count = rounds(3'000, 15'000);
    const auto work = [&](int number) {
        const std::string path = m_tree.makeFile("t/item " + std::to_string(number), std::to_string(number));
        for (int round = 0; round < count; ++round) {
            const MoveAnswer hidden = hideItem(path);
            const MoveAnswer visible = unhideItem(hidden.newPath);
            if (hidden.error != WorkerError::Success || visible.newPath != path)
                ++failures;
        }
        EXPECT_EQ(readFile(path), std::to_string(number));
    };
    {
        std::vector<std::jthread> threads;
        for (int number = 0; number < 4; ++number)
            threads.emplace_back(work, number);
    }
    EXPECT_EQ(failures, 0);
    EXPECT_FALSE(exists(m_tree.path("t/.SYS_INDEX")));
}

// Keeps making something at a path as long as it lives, and looks whether it stays.
class Rival {
public:
    explicit Rival(std::string path) : m_path(std::move(path)), m_thread([this] { run(); }) {}
    ~Rival() { m_done = true; }

    int made() const { return m_made; }
    int replaced() const { return m_replaced; }

private:
    void run() {
        for (int round = 0; !m_done; ++round)
            if (make(round % 3) == 0) {
                ++m_made;
                struct stat status = {};
                if (::lstat(m_path.c_str(), &status) != 0 || (status.st_mode & S_IFMT) != kinds[round % 3] ||
                    ::remove(m_path.c_str()) != 0)
                    ++m_replaced;
            }
    }

    int make(int kind) {
        if (kinds[kind] == S_IFDIR)
            return ::mkdir(m_path.c_str(), 0755);
        return kinds[kind] == S_IFLNK ? ::symlink("rival", m_path.c_str())
                                      : ::mknod(m_path.c_str(), S_IFREG | 0644, 0);
    }

    static constexpr unsigned int kinds[] = {S_IFREG, S_IFDIR, S_IFLNK};

    const std::string m_path;
    std::atomic<bool> m_done = false;
    std::atomic<int> m_made = 0, m_replaced = 0;
    std::jthread m_thread;
};

// A world in which some system calls fail.
struct World {
    const char* name;
    std::map<long, int> failures;

    bool enter() const {
        return std::all_of(failures.begin(), failures.end(),
                           [](const auto& failure) { return failCall(failure.first, failure.second); });
    }
};

void atTheSameTime(std::initializer_list<std::function<void()>> actions) {
    std::latch start(static_cast<std::ptrdiff_t>(actions.size()));
    std::vector<std::jthread> threads;
    for (const auto& action : actions)
        threads.emplace_back([&] {
            start.arrive_and_wait();
            action();
        });
}

const World worlds[] = {
    {"one step", {}},
    {"two steps", {{SYS_renameat2, EINVAL}}},
    {"placeholder", {{SYS_renameat2, EINVAL}, {SYS_linkat, EPERM}}},
};

// A rival keeps making things at the place that the item is to come back to: whichever is first keeps it.
TEST_F(RivalTest, NothingIsReplacedInARace) {
    const auto race = [&](const World& world, const std::string& path) {
        ASSERT_TRUE(world.enter());
        const std::string hidden = hiddenPathOf(path);
        const auto before = snapshotOf(path);
        int broughtBack = 0, refused = 0;
        Rival rival(path);
        const int count = rounds(500, 2'500);
        for (int round = 0; round < count && rival.replaced() == 0; ++round) {
            EXPECT_EQ(hideItem(path).error, WorkerError::Success);
            const MoveAnswer answer = unhideItem(hidden);
            ++(answer.error == WorkerError::Success ? broughtBack : refused);
            while (exists(hidden))
                unhideItem(hidden);
        }
        EXPECT_EQ(rival.replaced(), 0);
        EXPECT_EQ(snapshotOf(path), before);
        std::printf("%s: brought back at once %d, refused at first %d, the rival's items %d\n", world.name,
                    broughtBack, refused, rival.made());
    };
    for (const World& world : worlds)
        for (const char* const name : {"t/file.txt", "t/folder"}) {
            m_tree.makeFile("t/file.txt", "mine");
            m_tree.makeFile("t/folder/file.txt", "mine");
            EXPECT_TRUE(runInChild([&] { race(world, m_tree.path(name)); })) << world.name << " " << name;
        }
}

// What killed workers leave, while surviving ones move the same item and its leftovers are put right from
// both sides: it ends up with one name, and never with none.
TEST_F(RivalTest, LeftoversHealToOneName) {
    m_tree.makeDirectory("t/.SYS_INDEX");
    const std::string visible = m_tree.path("t/file.txt"), hidden = hiddenPathOf(visible);
    const auto leave = [&](int kind) {
        switch (kind) {
        case 0:
            return ::link(visible.c_str(), hidden.c_str());
        case 1:
            return ::mknod(hidden.c_str(), S_IFREG, 0);
        default:
            return ::rename(visible.c_str(), hidden.c_str()) | ::mknod(visible.c_str(), S_IFREG, 0);
        }
    };
    const auto race = [&](const World& world) {
        ASSERT_TRUE(world.enter());
        int hiddenAtEnd = 0;
        const int count = rounds(1'000, 10'000);
        for (int round = 0; round < count && !::testing::Test::HasFailure(); ++round) {
            m_tree.makeDirectory("t/.SYS_INDEX");
            m_tree.makeFile("t/file.txt", "mine");
            const auto before = snapshotOf(visible);
            ASSERT_EQ(leave(world.failures.empty() ? 0 : round % 3), 0);
            atTheSameTime({[&] { (void)hideItem(visible); }, [&] { (void)unhideItem(hidden); },
                           [&] { EXPECT_TRUE(healHalfDoneMove(visible)); },
                           [&] { EXPECT_TRUE(healHalfDoneMove(hidden)); }});
            const bool isHidden = exists(hidden) && snapshotOf(hidden) == before;
            const std::string& path = isHidden ? hidden : visible;
            EXPECT_TRUE(healHalfDoneMove(path));
            EXPECT_NE(exists(visible), exists(hidden));
            EXPECT_EQ(snapshotOf(path), before);
            hiddenAtEnd += isHidden;
            ::unlink(path.c_str());
        }
        std::printf("%s: %d rounds, hidden at the end of %d\n", world.name, count, hiddenAtEnd);
    };
    for (const World& world : worlds)
        EXPECT_TRUE(runInChild([&] { race(world); })) << world.name;
}

} // namespace
} // namespace veilkeep::test
