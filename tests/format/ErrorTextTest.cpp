#include "format/ErrorText.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <cerrno>

namespace veilkeep {
namespace {

TEST(ErrorText, EveryNumberHasAText) {
    const std::pair<int, QString> rows[] = {
        {0, "Success"},
        {1, "Unknown error"},
        {2, "Item not found."},
        {3, "Not enough rights to perform operation."},
        {4, "Item you requested is already hidden."},
        {5, "Can't create directory for storing hidden items."},
        {6, "Item with the same name already exists."},
        {7, "User cancelled operation."},
        {8, "It is not allowed to hide these items to avoid serious system malfunctions."},
        {14, "Unknown error (14)"},
        {-1, "Unknown error (-1)"},
    };
    for (const auto& [number, text] : rows)
        EXPECT_EQ(workerErrorText(number), text);
    QStringList ours;
    for (int number = 9; number <= 13; ++number)
        ours << workerErrorText(number);
    EXPECT_EQ(ours.removeDuplicates(), 0);
    EXPECT_FALSE(ours.contains(QString()));
}

TEST(ErrorText, ReasonOfASystemErrorIsTheSystems) {
    EXPECT_EQ(errorReason(Error::system("rename", "/a", ENOSPC)), "No space left on device");
}

} // namespace
} // namespace veilkeep
