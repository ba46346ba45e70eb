#include "tests/filelist/World.h"
#include "core/base/PathText.h"
#include "tests/support/LoopVolume.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/Rounds.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace veilkeep::test {
namespace {

// A volume of its own, so that a search of the whole volume is short.
class WorldTest : public testing::TestWithParam<const char*> {
protected:
    WorldTest() {
        if (GetParam() == std::string("tmpfs"))
            m_memory = std::make_unique<PrivateMount>("memory", m_tree.makeDirectory("volume"), "tmpfs");
        else
            m_volume = std::make_unique<LoopVolume>(m_tree, GetParam());
    }
    std::string place() const { return m_volume ? m_volume->mountPoint() : m_tree.path("volume"); }
    std::string whyMissing() const { return m_volume ? m_volume->whyMissing() : m_memory->whyMissing(); }

    void runSequence(unsigned int seed) {
        ::setenv("XDG_DATA_HOME", joinPath(place(), "data").c_str(), 1);
        World world(place(), seed);
        try {
            world.run();
        } catch (const std::exception& exception) {
            ADD_FAILURE() << exception.what();
        }
        if (HasFailure()) {
            std::printf("VEILKEEP_SEED=%u on %s:\n", seed, GetParam());
            for (const std::string& step : world.steps())
                std::printf("  %s\n", step.c_str());
        }
        std::filesystem::remove_all(joinPath(place(), "items"));
        std::filesystem::remove_all(joinPath(place(), "data"));
    }

private:
    ScratchTree m_tree;
    std::unique_ptr<PrivateMount> m_memory;
    std::unique_ptr<LoopVolume> m_volume;
};

// New random sequences for a minute; in a long run for as long as it takes to make a good number of them.
TEST_P(WorldTest, NothingIsLostAndTheListSaysSo) {
    if (!whyMissing().empty())
        GTEST_SKIP() << whyMissing();
    if (const char* const seed = std::getenv("VEILKEEP_SEED"))
        return runSequence(static_cast<unsigned int>(std::strtoul(seed, nullptr, 10)));
    const unsigned int first = std::random_device()();
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    const unsigned int least = static_cast<unsigned int>(rounds(1, 1'000));
    unsigned int count = 0;
    for (; !HasFailure() && (count < least || std::chrono::steady_clock::now() < end); ++count)
        runSequence(first + count);
    std::printf("%u sequences of %d steps with the seeds from %u on\n", count, World::stepsInSequence, first);
}

INSTANTIATE_TEST_SUITE_P(Volumes, WorldTest, testing::Values("tmpfs", "ext4"),
                         [](const auto& volume) { return std::string(volume.param); });

} // namespace
} // namespace veilkeep::test
