#include "platform/linux/AutostartEntry.h"

#include "platform/linux/ExecLine.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

namespace veilkeep::test {
namespace {

class AutostartEntryTest : public ::testing::Test {
protected:
    AutostartEntryTest() {
        ::setenv("XDG_CONFIG_DIRS", (m_tree.makeDirectory("other") + ":" + m_tree.path("system")).c_str(), 1);
    }
    ~AutostartEntryTest() override { ::unsetenv("XDG_CONFIG_DIRS"); }

    std::string user(const std::string& name, const std::string& content) const {
        return m_tree.makeFile("home/.config/autostart/" + name, content);
    }
    std::string ofSystem(const std::string& name, const std::string& content) const {
        return m_tree.makeFile("system/autostart/" + name, content);
    }
    static std::string entry(const std::string& program, const std::string& more = {}) {
        return "[Desktop Entry]\nType=Application\nName=x\nExec=" + program + "\n" + more;
    }
    std::set<std::string> names() const {
        const std::string directory = m_tree.path("home/.config/autostart");
        return exists(directory) ? namesIn(directory) : std::set<std::string>();
    }

    const ScratchTree m_tree;
    const std::string m_bundle = m_tree.makeDirectory("V.app");
    const std::string m_program = m_tree.makeFile("V.app/Contents/MacOS/Veilkeep", "#!/bin/sh\n", 0755);
    AutostartEntry m_item{m_bundle};
};

TEST_F(AutostartEntryTest, WhatCountsAsAnEntry) {
    const std::string link = m_tree.path("link");
    ASSERT_EQ(::symlink(m_program.c_str(), link.c_str()), 0);
    const std::string other = m_tree.makeFile("W.app/Contents/MacOS/Veilkeep", "#!/bin/sh\n", 0755);
    const struct {
        std::string what, content;
        bool isOn;
    } rows[] = {
        {"plain", entry(m_program + " --login"), true},
        {"by a link", entry(link), true},
        {"by env", entry("env A=b C=d " + m_program + " --login"), true},
        {"hidden", entry(m_program, "Hidden=true\n"), false},
        {"switched off", entry(m_program, "X-GNOME-Autostart-enabled=false\n"), false},
        {"another copy", entry(other), false},
        {"as an argument", entry("/bin/echo " + m_program), false},
        {"in another group", "[Desktop Entry]\nExec=/bin/true\n[Desktop Action x]\nExec=" + m_program + "\n",
         false},
        {"cut off quote", entry("\"" + m_program), false},
        {"rubbish", "\xff\xfe", false},
    };
    for (const auto& row : rows) {
        const std::string path = user("any name.desktop", row.content);
        EXPECT_EQ(m_item.shouldLaunchAtLogin(), row.isOn) << row.what;
        ::unlink(path.c_str());
    }
    user("x.desktop.bak", entry(m_program));
    EXPECT_FALSE(m_item.shouldLaunchAtLogin());
}

TEST_F(AutostartEntryTest, TurnsOnOnceAndOffOneByOne) {
    user(AutostartEntry::fileName, entry(m_program, "Hidden=true\nX-GNOME-Autostart-enabled=false\n"));
    ASSERT_TRUE(m_item.setShouldLaunchAtLogin(true));
    const std::string written = readFile(m_tree.path("home/.config/autostart/com.ostrel.Veilkeep.desktop"));
    EXPECT_NE(written.find("Exec=" + m_program + " --login\n"), std::string::npos) << written;
    EXPECT_TRUE(m_item.shouldLaunchAtLogin());
    ASSERT_TRUE(m_item.setShouldLaunchAtLogin(true));
    EXPECT_EQ(names(), std::set<std::string>{AutostartEntry::fileName});

    user("another.desktop", entry(m_program));
    user("not ours.desktop", entry("/bin/true"));
    ASSERT_TRUE(m_item.setShouldLaunchAtLogin(false));
    EXPECT_TRUE(m_item.shouldLaunchAtLogin()) << "the first one is off";
    EXPECT_EQ(names(), (std::set<std::string>{AutostartEntry::fileName, "not ours.desktop"}));
    ASSERT_TRUE(m_item.setShouldLaunchAtLogin(false));
    ASSERT_TRUE(m_item.setShouldLaunchAtLogin(false));
    EXPECT_EQ(names(), std::set<std::string>{"not ours.desktop"});
}

TEST_F(AutostartEntryTest, HidesTheSystemsEntry) {
    const std::string path = ofSystem("veilkeep.desktop", entry(m_program));
    EXPECT_TRUE(m_item.shouldLaunchAtLogin());
    user("veilkeep.desktop", entry(m_program, "X-Mine=true\n")); // in front of it
    ASSERT_TRUE(m_item.setShouldLaunchAtLogin(false));
    EXPECT_FALSE(m_item.shouldLaunchAtLogin());
    EXPECT_EQ(names(), std::set<std::string>{"veilkeep.desktop"});
    EXPECT_EQ(readFile(path), entry(m_program));
    ASSERT_TRUE(m_item.setShouldLaunchAtLogin(true));
    EXPECT_TRUE(m_item.shouldLaunchAtLogin());
}

// What desktops start from the file is that very program.
TEST_F(AutostartEntryTest, ALinkIsReplacedAndNotWhatItLeadsTo) {
    const std::string others = m_tree.makeFile("theirs", entry("/bin/true"));
    m_tree.makeDirectory("home/.config/autostart");
    const std::string own = m_tree.path("home/.config/autostart/") + AutostartEntry::fileName;
    ASSERT_EQ(::symlink(others.c_str(), own.c_str()), 0);
    EXPECT_TRUE(m_item.setShouldLaunchAtLogin(true));
    EXPECT_TRUE(m_item.shouldLaunchAtLogin());
    EXPECT_EQ(readFile(others), entry("/bin/true"));
    EXPECT_EQ(names(), std::set<std::string>{AutostartEntry::fileName});
}

TEST_F(AutostartEntryTest, HardPathsAreStarted) {
    for (const std::string name :
         {"with blank", "q\"uo'te", "100%U", "$HOME`x`", "back\\slash \\n", "ümlaut", "a;b&c"}) {
        const std::string bundle = m_tree.makeDirectory(name);
        const std::string told = m_tree.path("told");
        m_tree.makeFile(name + "/Contents/MacOS/Veilkeep",
                        "#!/bin/sh\nprintf '%s|%s|%s' \"$#\" \"$1\" \"$0\" > " + told + ".new && mv " + told +
                            ".new " + told + "\n",
                        0755);
        AutostartEntry item(bundle);
        ASSERT_TRUE(item.setShouldLaunchAtLogin(true)) << name;
        EXPECT_TRUE(item.shouldLaunchAtLogin()) << name;
        const std::string file = m_tree.path("home/.config/autostart/com.ostrel.Veilkeep.desktop");
        const ProgramRun valid = runProgram({"/usr/bin/desktop-file-validate", file});
        EXPECT_EQ(valid.exitStatus, 0) << name << valid.output << readFile(file);
        EXPECT_EQ(runProgram({"/usr/bin/gio", "launch", file}).exitStatus, 0) << name;
        EXPECT_TRUE(waitUntil([&] { return exists(told); })) << name;
        EXPECT_EQ(readFile(told), "1|--login|" + bundle + "/Contents/MacOS/Veilkeep");
        ::unlink(told.c_str());
        ASSERT_TRUE(item.setShouldLaunchAtLogin(false)) << name;
    }
    EXPECT_FALSE(AutostartEntry(m_tree.makeDirectory("\xff")).setShouldLaunchAtLogin(true));
    EXPECT_EQ(names(), std::set<std::string>());
}

// The session bus reads its service files without field codes.
TEST(ExecLineTest, WordsOfServiceFiles) {
    const struct {
        const char *path, *known, *unknown, *inUnit;
    } rows[] = {
        {"/a/b", "/a/b", "/a/b", "/a/b"},
        {"/a b", "\"/a b\"", "\"/a b\"", "\"/a b\""},
        {"/50%", "/usr/bin/env \"/50%%\"", "\"/50%\"", "\"/50%%\""},
        {"/$x", "\"/\\\\$x\"", "\"/\\\\$x\"", "\"/$x\""},
        {"/a\nb", "\"/a\\nb\"", "\"/a\\nb\"", "\"/a\\nb\""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(execWord(row.path, FieldCodes::Known).value_or("?"), row.known);
        EXPECT_EQ(execWord(row.path, FieldCodes::Unknown).value_or("?"), row.unknown);
        EXPECT_EQ(unitWord(row.path).value_or("?"), row.inUnit);
    }
}

} // namespace
} // namespace veilkeep::test
