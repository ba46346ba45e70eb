#include "widgets/preview/WorkQueue.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>
#include <future>

namespace veilkeep {
namespace {

constexpr int stillThere = 7;

// As that of a library, which work that was left behind may still be using.
void destroyStatics() {
    ::_exit(1);
}

void endWithWorkThatDoesNotStop() {
    std::atexit(destroyStatics);
    std::promise<void> hasBegun;
    {
        WorkQueue queue(1);
        queue.add({[&hasBegun](const WorkStop&) {
            hasBegun.set_value();
            std::promise<void>().get_future().wait(); // as on a disk that does not answer
        }});
        hasBegun.get_future().wait();
    }
    std::exit(stillThere);
}

TEST(WorkQueueDeathTest, WorkThatDoesNotStopKeepsWhatItUses) {
    EXPECT_EXIT(endWithWorkThatDoesNotStop(), ::testing::ExitedWithCode(stillThere), "");
}

} // namespace
} // namespace veilkeep
