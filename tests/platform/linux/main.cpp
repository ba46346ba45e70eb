#include <gtest/gtest.h>

#include <QCoreApplication>

// The threads of the services that the tests play run only beside one.
int main(int count, char** arguments) {
    ::testing::InitGoogleTest(&count, arguments);
    const QCoreApplication application(count, arguments);
    return RUN_ALL_TESTS();
}
