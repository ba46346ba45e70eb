#include "format/ErrorText.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <cerrno>

namespace veilkeep {
namespace {

TEST(ErrorText, EveryNumberHasATextOfItsOwn) {
    QStringList texts;
    for (int number = -1; number <= 14; ++number)
        texts << workerErrorText(number);
    EXPECT_EQ(texts.first(), "Unknown error (-1)");
    EXPECT_EQ(texts.last(), "Unknown error (14)");
    EXPECT_EQ(texts.removeDuplicates(), 0);
    EXPECT_FALSE(texts.contains(QString()));
}

TEST(ErrorText, ReasonOfASystemErrorIsTheSystems) {
    EXPECT_EQ(errorReason(Error::system("rename", "/a", ENOSPC)), "No space left on device");
}

} // namespace
} // namespace veilkeep
