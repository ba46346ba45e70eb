#include <gtest/gtest.h>

#include <QCoreApplication>

// Open alerts need its event loop.
int main(int count, char** arguments) {
    ::testing::InitGoogleTest(&count, arguments);
    const QCoreApplication application(count, arguments);
    return RUN_ALL_TESTS();
}
