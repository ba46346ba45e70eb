#pragma once

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>
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
    constexpr unsigned int nobody = 65534;
    ASSERT_EQ(::setgid(nobody), 0);
    ASSERT_EQ(::setuid(nobody), 0);
}

// Mounts an empty file system in memory that this process and its children alone see.
inline void mountPrivately(const std::string& directory, const char* options) {
    ASSERT_EQ(::unshare(CLONE_NEWNS), 0);
    ASSERT_EQ(::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr), 0);
    ASSERT_EQ(::mount("tmpfs", directory.c_str(), "tmpfs", 0, options), 0);
}

} // namespace veilkeep::test
