#include "platform/linux/LinuxProcesses.h"

#include "tests/support/RunInChild.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>

namespace veilkeep::test {
namespace {

TEST(LinuxProcessesTest, OnlyWhoCanBeTheFormerOneIsWaitedFor) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds limit(200);
    const LinuxProcesses processes;
    const pid_t sleeper = startChild([] { ::pause(); });
    ::kill(sleeper, SIGSTOP); // a child of ours: neither our parent nor here before us
    const struct {
        pid_t process;
        bool isFormer; // and stays, so it is waited for all of the limit
    } rows[] = {{::getppid(), true}, {sleeper, false}, {1, false}, {99999999, false}, {-1, false}};
    for (const auto& row : rows) {
        const auto begin = Clock::now();
        EXPECT_EQ(processes.waitForFormer(row.process, limit), row.isFormer) << row.process;
        EXPECT_EQ(Clock::now() - begin >= limit, row.isFormer) << row.process;
    }
    ::kill(sleeper, SIGKILL);
    ::waitpid(sleeper, nullptr, 0);

    // One that ends while it is waited for.
    const ScratchTree tree;
    const std::string result = tree.path("result");
    EXPECT_TRUE(runInChild([&] {
        startChild([former = ::getpid(), &result, &processes] {
            processes.waitForFormer(former, std::chrono::minutes(1));
            writeFile(result, ::getppid() == former ? "too early" : "it has ended");
        });
    }));
    EXPECT_TRUE(waitUntil([&] { return exists(result) && readFile(result) == "it has ended"; }));
}

TEST(LinuxProcessesTest, WhatTheSessionStarts) {
    const struct {
        const char *name, *program, *group;
        bool isSessions;
    } rows[] = {
        {"gnome-session-b", "/usr/libexec/gnome-session-binary", "", true},
        {"gnome-session-b", "", "", true},
        {"xfce4-session", "/home/u/other", "", false},
        {"xfce4-panel", "/usr/bin/xfce4-panel", "", false},
        {"systemd", "/usr/lib/systemd/systemd", "/a.slice/app-com.ostrel.Veilkeep@autostart.service", true},
        {"systemd", "/usr/lib/systemd/systemd", "/a.slice/app-other@autostart.service", false},
        {"systemd", "/usr/lib/systemd/systemd", "/a.slice/app-gnome-veilkeep-12.scope", false},
        {"bash", "/bin/bash", "/a.slice/app-org.kde.yakuake@autostart.service", false},
    };
    for (const auto& row : rows) {
        ProcessStatus process, parent;
        process.controlGroup = row.group;
        parent.name = row.name;
        parent.program = row.program;
        EXPECT_EQ(LinuxProcesses::isLaunchOfSession(process, parent), row.isSessions)
            << row.program << row.group;
    }
}

} // namespace
} // namespace veilkeep::test
