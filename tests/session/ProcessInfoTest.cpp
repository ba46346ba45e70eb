#include "session/ProcessInfo.h"

#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <sys/prctl.h>
#include <unistd.h>

namespace veilkeep::test {
namespace {

TEST(ProcessInfoTest, ReadsWhatTheSystemTellsOfAProcess) {
    char name[16] = {};
    ::prctl(PR_GET_NAME, name);
    ::prctl(PR_SET_NAME, ") R 1 (x y"); // as any process may
    const auto process = ProcessInfo::processInformation();
    ::prctl(PR_SET_NAME, name);
    ASSERT_TRUE(process);
    EXPECT_EQ(process->name, ") R 1 (x y");
    EXPECT_EQ(process->id, ::getpid());
    EXPECT_EQ(process->parent, ::getppid());
    EXPECT_EQ(process->user, ::geteuid());
    EXPECT_TRUE(process->program.ends_with("/session_test")) << process->program;
    const auto parent = ProcessInfo::parentProcessInformation();
    ASSERT_TRUE(parent);
    EXPECT_LE(parent->startTime, process->startTime);
    EXPECT_FALSE(ProcessStatus::of(-1));
    for (const char* const line :
         {"", "1", "1 (a", "1 (a) S", ")1 (", "x (a) S 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19"})
        EXPECT_FALSE(processStatusFromLine(line)) << line;
}

TEST(ProcessInfoTest, WhatTheSessionStarts) {
    const struct {
        const char *name, *program, *group;
        bool isSessions;
    } rows[] = {
        {"gnome-session-b", "/usr/libexec/gnome-session-binary", "", true},
        {"gnome-session-b", "", "", true},
        {"xfce4-session", "/usr/bin/xfce4-session", "", true},
        {"xfce4-session", "/home/u/other", "", false},
        {"xfce4-panel", "/usr/bin/xfce4-panel", "", false},
        {"systemd", "/usr/lib/systemd/systemd", "/a.slice/app-com.ostrel.Veilkeep@autostart.service", true},
        {"systemd", "/usr/lib/systemd/systemd", "/a.slice/app-other@autostart.service", false},
        {"systemd", "/usr/lib/systemd/systemd", "/a.slice/app-gnome-veilkeep-12.scope", false},
        {"bash", "/bin/bash", "/a.slice/app-org.kde.yakuake@autostart.service", false},
        {"systemd", "/usr/lib/systemd/systemd", "", false},
    };
    for (const auto& row : rows) {
        ProcessStatus process, parent;
        process.controlGroup = row.group;
        parent.name = row.name;
        parent.program = row.program;
        EXPECT_EQ(ProcessInfo::isLaunchOfSession(process, parent), row.isSessions)
            << row.program << row.group;
    }
}

TEST(ProcessInfoTest, AppsFolders) {
    const ScratchTree tree;
    const std::pair<std::string, bool> rows[] = {
        {"/usr/lib/veilkeep/Veilkeep.app", true},
        {"/usr/lib/veilkeep/sub/Veilkeep.app", true},
        {"/usr/lib/veilkeepOld/Veilkeep.app", true}, // the text alone counts
        {tree.home() + "/.local/lib/veilkeep/Veilkeep.app", true},
        {"/usr/lib/Veilkeep.app", false},
        {tree.home() + "/Veilkeep.app", false},
        {"/srv/usr/lib/veilkeep/Veilkeep.app", false},
        {"", false},
    };
    tree.makeDirectory("home/.local/lib/veilkeep");
    ASSERT_EQ(::symlink(tree.home().c_str(), tree.path("link").c_str()), 0);
    EXPECT_TRUE(ProcessInfo::isInAppsFolder(tree.path("link/.local/lib/veilkeep/Veilkeep.app")));
    for (const auto& [bundle, isThere] : rows)
        EXPECT_EQ(ProcessInfo::isInAppsFolder(bundle), isThere) << bundle;
}

} // namespace
} // namespace veilkeep::test
