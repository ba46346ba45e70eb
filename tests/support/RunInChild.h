#pragma once

#include "tests/support/RunProgram.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <functional>

namespace veilkeep::test {

// A child that runs the body and fails when an expectation in it did.
inline pid_t startChild(const std::function<void()>& body) {
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child != 0)
        return child;
    body();
    std::fflush(nullptr);
    ::_exit(::testing::Test::HasFailure() ? 1 : 0);
}

inline bool endedWell(pid_t child) {
    int status = 0;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
}

inline bool runInChild(const std::function<void()>& body) {
    return endedWell(startChild(body));
}

// From here on this process has only the rights of an ordinary user.
inline void becomeOrdinaryUser() {
    ASSERT_EQ(::setgid(ordinaryUser), 0);
    ASSERT_EQ(::setuid(ordinaryUser), 0);
}

} // namespace veilkeep::test
