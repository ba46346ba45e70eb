#include "core/protocol/RestoreSummary.h"

#include <gtest/gtest.h>

namespace veilkeep {
namespace {

TEST(RestoreSummary, IsReadBackFromItsText) {
    for (const RestoreSummary& summary :
         {RestoreSummary{WorkerError::Success, 0, 0}, RestoreSummary{WorkerError::Success, 12, 3},
          RestoreSummary{WorkerError::InputOutput, 0, 0}})
        EXPECT_EQ(restoreSummaryFromText(summaryText(summary)), summary) << summaryText(summary);
}

TEST(RestoreSummary, AnotherTextIsAnUnknownError) {
    const char* const texts[] = {"",
                                 "Found: 1",
                                 "Found: 1\n",
                                 "Found: 1\nUnreadable: 2",
                                 "Found: 1\nUnreadable: 2\nmore",
                                 "Found: -1\nUnreadable: 2\n",
                                 "Found: 99999999999999999999\nUnreadable: 2\n",
                                 " Found: 1\nUnreadable: 2\n",
                                 "Error: ",
                                 "Error: 0",
                                 "Error: 14",
                                 "Error: -2"};
    for (const char* const text : texts)
        EXPECT_EQ(restoreSummaryFromText(text), (RestoreSummary{WorkerError::Unknown, 0, 0})) << text;
}

} // namespace
} // namespace veilkeep
