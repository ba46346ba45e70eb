#include <gtest/gtest.h>

#include <QCoreApplication>

// Posted calls, the alerts of other threads and the threads of services need one.
int main(int count, char** arguments) {
    ::testing::InitGoogleTest(&count, arguments);
    const QCoreApplication application(count, arguments);
    return RUN_ALL_TESTS();
}
