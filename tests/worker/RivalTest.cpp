#include "tests/support/Rounds.h"
#include "tests/worker/WorkerFixture.h"

#include "core/base/UniqueFd.h"
#include "worker/ExclusiveRename.h"
#include "worker/ItemMover.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
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

// A rival keeps making a file at the place that the item is to come back to: whichever is first keeps it.
TEST_F(RivalTest, NothingIsReplacedInARace) {
    const std::string path = m_tree.makeFile("t/item.txt", "mine");
    const std::string hidden = hiddenPathOf(path);
    std::atomic<bool> done = false;
    std::atomic<int> rivalsFiles = 0, replaced = 0;
    std::jthread rival([&] {
        while (!done) {
            const UniqueFd fd(::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0644));
            if (!fd)
                continue;
            ++rivalsFiles;
            struct stat made = {}, now = {};
            if (::fstat(fd.get(), &made) != 0 || ::lstat(path.c_str(), &now) != 0 ||
                made.st_ino != now.st_ino)
                ++replaced;
            else
                ::unlink(path.c_str());
        }
    });
    int broughtBack = 0, refused = 0;
    const int count = rounds(2'000, 10'000);
    for (int round = 0; round < count && replaced == 0; ++round) {
        if (hideItem(path).error != WorkerError::Success || !exists(hidden))
            continue;
        const MoveAnswer answer = unhideItem(hidden);
        ++(answer.error == WorkerError::Success ? broughtBack : refused);
        while (exists(hidden))
            unhideItem(hidden);
    }
    done = true;
    rival.join();
    EXPECT_EQ(replaced, 0);
    std::printf("brought back at once %d, refused at first %d, the rival's files %d\n", broughtBack, refused,
                rivalsFiles.load());
}

} // namespace
} // namespace veilkeep::test
