#include "core/base/PathText.h"
#include "core/storage/TemporaryFile.h"
#include "tests/endurance/World.h"
#include "tests/support/LoopVolume.h"
#include "tests/support/OpenDescriptors.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/Rounds.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#ifdef __SANITIZE_ADDRESS__
// Not every compiler brings the sanitizers' headers.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
extern "C" int __lsan_do_recoverable_leak_check();
#endif

namespace veilkeep::test {
namespace {

std::ptrdiff_t runningThreads() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
}

// Without taking its status from whoever waits for it.
bool someChild() {
    siginfo_t info = {};
    return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0 || errno != ECHILD;
}

std::string descriptorList() {
    std::string list;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
        list += "\n  " + entry.path().filename().string() + " " +
                std::filesystem::read_symlink(entry.path(), error).string();
    return list;
}

// What this process holds between two sequences, and should hold no more of after the second. There is never
// to be a child.
struct Remains {
    std::ptrdiff_t descriptors = openDescriptors();
    std::ptrdiff_t threads = runningThreads();

    // In words, with what the descriptors are; empty for none.
    std::string beyond(const Remains& before) const {
        std::string text;
        if (descriptors != before.descriptors)
            text += std::to_string(descriptors) + " descriptors instead of " +
                    std::to_string(before.descriptors) + ":" + descriptorList() + "\n";
        if (threads != before.threads)
            text += std::to_string(threads) + " threads instead of " + std::to_string(before.threads) + "\n";
        if (someChild())
            text += "a child process\n";
        return text;
    }
};

#ifdef __SANITIZE_ADDRESS__
// Live bytes of the heap, where a sanitizer counts them; else 0.
std::size_t heapBytes() {
    return __sanitizer_get_current_allocated_bytes();
}

// Whether a sanitizer finds memory that nothing points to, which it then tells on standard error.
bool hasLeaks() {
    return __lsan_do_recoverable_leak_check() != 0;
}
#else
std::size_t heapBytes() {
    return 0;
}

bool hasLeaks() {
    return false;
}
#endif

using Clock = std::chrono::steady_clock;

// Sanitizers find what lies in wait for long; without them it is shown that the sequences run at all.
std::chrono::seconds timeToRun() {
#ifdef __SANITIZE_ADDRESS__
    return std::chrono::minutes(rounds(10, 60));
#else
    return std::chrono::seconds(rounds(5, 60));
#endif
}

class EnduranceTest : public testing::Test {
protected:
    std::string whyMissing() const {
        return m_memory.whyMissing().empty() ? m_disk.whyMissing() : m_memory.whyMissing();
    }

    void runSequence(unsigned int seed) {
        const std::string place = seed % 2 == 0 ? m_tree.path("memory") : m_disk.mountPoint();
        ::setenv("XDG_DATA_HOME", joinPath(place, "data").c_str(), 1);
        {
            World world(place, seed, m_worker);
            try {
                world.run();
            } catch (const std::exception& exception) {
                ADD_FAILURE() << exception.what();
            }
            if (HasFailure())
                for (const std::string& step : world.steps())
                    std::printf("  %s\n", step.c_str());
        }
        for (const std::string& name : namesIn(OwnPlaces::current().dataDirectory))
            EXPECT_FALSE(TemporaryFile::isName(name)) << name;
        std::filesystem::remove_all(joinPath(place, "items"));
        std::filesystem::remove_all(joinPath(place, "data"));
    }

    // The first one opens what stays open.
    void runAndCompare(unsigned int seed) {
        if (!m_before) {
            runSequence(seed);
            m_before.emplace();
        }
        runSequence(seed);
        EXPECT_TRUE(waitUntil([this] { return Remains().beyond(*m_before).empty(); }))
            << Remains().beyond(*m_before);
        EXPECT_FALSE(hasLeaks());
        if (HasFailure())
            std::printf("VEILKEEP_SEED=%u repeats it.\n", seed);
    }

private:
    ScratchTree m_tree;
    PrivateMount m_memory{"memory", m_tree.makeDirectory("memory"), "tmpfs", 0, "size=64m"};
    LoopVolume m_disk{m_tree, "ext4", {.megabytes = 32}};
    BadWorker m_worker{m_tree, bundledProgram("cloakWorker")};
    std::optional<Remains> m_before;
};

// What is kept for the next time is as much after the first sequences as after the last.
constexpr unsigned int firstSequences = 20;
constexpr std::size_t heapThatMayGrow = std::size_t{1} << 20; // bytes

TEST_F(EnduranceTest, NothingIsLostAndNothingLeaks) {
    if (!whyMissing().empty())
        GTEST_SKIP() << whyMissing();
    if (const char* const seed = std::getenv("VEILKEEP_SEED"))
        return runAndCompare(static_cast<unsigned int>(std::strtoul(seed, nullptr, 10)));
    const unsigned int first = std::random_device()();
    const auto end = Clock::now() + timeToRun();
    std::size_t heapBefore = 0;
    unsigned int count = 0;
    for (; !HasFailure() && Clock::now() < end; ++count) {
        runAndCompare(first + count);
        if (count < firstSequences)
            heapBefore = heapBytes();
    }
    std::printf(
        "%u sequences of %d steps with the seeds from %u on; the heap has grown from %zu to %zu bytes\n",
        count, World::stepsInSequence, first, heapBefore, heapBytes());
    EXPECT_LE(heapBytes(), heapBefore + heapThatMayGrow);
}

} // namespace
} // namespace veilkeep::test
