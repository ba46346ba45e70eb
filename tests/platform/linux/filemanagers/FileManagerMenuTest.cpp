#include "core/filesystem/Directories.h"
#include "tests/platform/linux/filemanagers/MenuWorld.h"
#include "tests/support/FailingCall.h"
#include "tests/support/RunInChild.h"
#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <functional>

namespace veilkeep::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::vector<std::string> allManagers = {"dolphin", "nautilus", "nemo", "thunar", "caja"};
constexpr auto usersActions =
    "<?xml version=\"1.0\"?>\n<actions>\n<action>\n\t<name>Mine ü</name>\n\t<unique-id>1-1"
    "</unique-id>\n\t<command>mine %F</command>\n</action>\n</actions>";

std::vector<std::string> pathsOf(const std::vector<Error>& errors) {
    std::vector<std::string> paths;
    for (const Error& error : errors)
        paths.push_back(error.path);
    return paths;
}

// Nothing of it stays, whatever of the user's was there before.
TEST(FileManagerMenu, WhatIsInstalledGoesWithoutAResidue) {
    const struct {
        const char* what;
        std::vector<std::string> managers;
        std::function<void(const MenuWorld&)> prepare;
        std::size_t files;
    } rows[] = {
        {"no file manager", {}, [](const MenuWorld&) {}, 0},
        {"all of them", allManagers, [](const MenuWorld&) {}, 8},
        {"one by its desktop entry",
         {},
         [](const MenuWorld& world) { world.tree.makeFile("usr/applications/org.kde.dolphin.desktop"); },
         1},
        {"empty directories and files of the user's", allManagers,
         [](const MenuWorld& world) {
             for (const char* each : {"nautilus/scripts", "nemo"})
                 EXPECT_TRUE(makeDirectories(world.data(each), 0755));
             world.tree.makeFile("home/.config/caja/scripts/Compress", "#!/bin/sh\n", 0755);
             world.tree.makeFile("home/.config/Thunar/uca.xml", usersActions, 0600);
             world.tree.makeFile("etc/Thunar/uca.xml", "<actions>\n</actions>\n");
         },
         8},
        {"actions of the system's",
         {"thunar"},
         [](const MenuWorld& world) { world.tree.makeFile("etc/Thunar/uca.xml", usersActions); },
         1},
        {"actions that lie elsewhere",
         {"thunar"},
         [](const MenuWorld& world) {
             world.tree.makeFile("home/dotfiles/uca.xml", usersActions);
             world.tree.makeDirectory("home/.config/Thunar");
             ASSERT_EQ(::symlink("../../dotfiles/uca.xml", world.config("Thunar/uca.xml").c_str()), 0);
         },
         1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const MenuWorld world;
        world.addManagers(row.managers);
        row.prepare(world);
        const auto before = world.home();
        LinuxFileManagerMenu menu = world.menu();
        EXPECT_FALSE(menu.isInstalled());

        const FileManagerChange installed = menu.install();
        EXPECT_FALSE(installed.hasFailed());
        EXPECT_EQ(installed.changed.size(), row.files);
        EXPECT_EQ(menu.isInstalled(), row.files > 0);
        const auto after = world.home();
        EXPECT_THAT(menu.install().changed, IsEmpty());
        EXPECT_EQ(world.home(), after);

        EXPECT_EQ(menu.remove().changed, installed.changed);
        EXPECT_FALSE(menu.isInstalled());
        EXPECT_EQ(world.home(), before);
    }
}

TEST(FileManagerMenu, EntriesOfAnOlderVersionOrAnotherCopyAreRenewed) {
    MenuWorld world;
    world.addManagers(allManagers);
    const auto before = world.home();
    ASSERT_FALSE(world.menu("0.9").install().hasFailed());
    EXPECT_EQ(world.menu("1.0").renew().changed.size(), 8U);
    EXPECT_THAT(world.menu("1.0").renew().changed, IsEmpty());

    world.bundle = world.tree.path("moved/Veilkeep.app");
    world.tree.makeDirectory("moved");
    std::filesystem::rename(world.tree.path("Veilkeep.app"), world.bundle);
    EXPECT_EQ(world.menu().renew().changed.size(), 8U);
    EXPECT_NE(readFile(world.config("Thunar/uca.xml")).find("moved/Veilkeep.app"), std::string::npos);
    EXPECT_FALSE(world.menu().remove().hasFailed());
    EXPECT_EQ(world.home(), before);
}

// No menu has an entry twice.
TEST(FileManagerMenu, WhatIsThereForEverybodyIsNotInstalledBeside) {
    const auto addForEverybody = [](const MenuWorld& world) {
        for (const char* each : {"kio/servicemenus/com.ostrel.Veilkeep.desktop",
                                 "nemo/actions/com.ostrel.Veilkeep.hide.nemo_action",
                                 "nemo/actions/com.ostrel.Veilkeep.show.nemo_action"})
            world.tree.makeFile(std::string("usr/") + each);
    };
    const struct {
        const char* what;
        std::vector<std::string> managers;
        std::size_t files; // of the user's own
        std::vector<std::string> forEverybody;
    } rows[] = {
        {"those alone", {"dolphin", "nemo"}, 0, {"Dolphin", "Nemo"}},
        {"another one as well", {"dolphin", "thunar"}, 1, {"Dolphin"}},
        {"others alone", {"nautilus", "caja"}, 4, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const MenuWorld world;
        world.addManagers(row.managers);
        const auto before = world.home();
        addForEverybody(world);
        LinuxFileManagerMenu menu = world.menu();
        EXPECT_EQ(menu.isInstalled(), row.files == 0);
        EXPECT_EQ(menu.install().changed.size(), row.files);
        EXPECT_TRUE(menu.isInstalled());
        for (const auto& entry : menu.entries())
            EXPECT_EQ(entry.state, MenuEntry::State::Current) << entry.path;
        EXPECT_EQ(menu.remove().forEverybody, row.forEverybody);
        EXPECT_EQ(menu.isInstalled(), row.files == 0);
        EXPECT_EQ(world.home(), before);
    }

    // They were the user's own before; one that the user changed stays.
    const MenuWorld world;
    world.addManagers({"dolphin", "nemo"});
    const auto before = world.home();
    ASSERT_FALSE(world.menu("0.9").install().hasFailed());
    addForEverybody(world);
    EXPECT_EQ(world.menu("1.0").renew().changed.size(), 3U);
    EXPECT_EQ(world.home(), before);
    std::filesystem::remove_all(world.tree.path("usr"));
    ASSERT_FALSE(world.menu().install().hasFailed());
    const std::string changed = world.data("nemo/actions/com.ostrel.Veilkeep.hide.nemo_action");
    writeFile(changed, readFile(changed) + "UriScheme=file\n");
    addForEverybody(world);
    EXPECT_EQ(world.menu().renew().changed.size(), 2U);
    EXPECT_TRUE(exists(changed));
}

TEST(FileManagerMenu, WhatIsNotOursAloneStays) {
    const MenuWorld world;
    world.addManagers(allManagers);
    const std::string script = "home/.local/share/nautilus/scripts/Hide with Veilkeep";
    const std::string own = world.tree.makeFile(script, "#!/bin/sh\nmine\n", 0755);
    const std::string broken = world.tree.makeFile("home/.config/Thunar/uca.xml", "<actions><action>");
    const std::string place = world.tree.makeFile("home/.config/caja", "no directory");
    const auto before = world.home();
    LinuxFileManagerMenu menu = world.menu();

    const FileManagerChange installed = menu.install();
    EXPECT_THAT(pathsOf(installed.notChanged), ElementsAre(own, broken));
    EXPECT_THAT(pathsOf(installed.noDirectory), ElementsAre(place + "/scripts", place + "/scripts"));
    EXPECT_EQ(installed.changed.size(), 4U);

    // One that the user has made his own is left alone by all that follows.
    const std::string changed = world.data("nemo/actions/com.ostrel.Veilkeep.hide.nemo_action");
    const std::string content = readFile(changed) + "UriScheme=file\n";
    writeFile(changed, content);
    EXPECT_FALSE(world.menu("2.0").renew().hasFailed());
    EXPECT_EQ(readFile(changed), content);
    EXPECT_THAT(pathsOf(menu.remove().notChanged), ElementsAre(changed));
    EXPECT_TRUE(menu.isInstalled());
    EXPECT_EQ(::unlink(changed.c_str()), 0);
    EXPECT_FALSE(menu.isInstalled());
    auto rest = world.home();
    EXPECT_EQ(rest.erase(".local/share/nemo/actions") + rest.erase(".local/share/nemo"), 2U);
    EXPECT_EQ(rest, before);
}

TEST(FileManagerMenu, ACommandThatTheUserEditedStays) {
    MenuWorld world;
    world.addManagers(allManagers);
    ASSERT_FALSE(world.menu("0.9").install().hasFailed());
    const std::string path = world.config("Thunar/uca.xml"), written = readFile(path);
    const std::string command = "<command>", option = " --hide -- ";
    for (const auto& [former, edited] : {std::pair(command, command + "env LANG=C "),
                                         std::pair(option, std::string(" --hide --verbose -- "))}) {
        std::string text = written;
        text.replace(text.find(former), former.size(), edited);
        writeFile(path, text);
        EXPECT_THAT(pathsOf(world.menu("1.0").remove().notChanged), ElementsAre(path));
        EXPECT_FALSE(world.menu("1.0").renew().hasFailed());
        EXPECT_FALSE(world.menu("1.0").install().hasFailed());
        EXPECT_EQ(readFile(path), text);
    }
}

TEST(FileManagerMenu, AFailureLeavesWhatWasThere) {
    const MenuWorld world;
    world.addManagers(allManagers);
    world.tree.makeFile("home/.config/Thunar/uca.xml", usersActions);
    const auto empty = world.home();
    EXPECT_TRUE(runInChild([&] {
        ASSERT_TRUE(failCall(SYS_renameat, ENOSPC));
        EXPECT_EQ(world.menu().install().notChanged.size(), 8U);
        EXPECT_EQ(world.home(), empty);
    }));
    ASSERT_FALSE(world.menu().install().hasFailed());
    EXPECT_TRUE(runInChild([&] {
        ASSERT_TRUE(failCall(SYS_unlink, EROFS));
        EXPECT_EQ(world.menu().remove().notChanged.size(), 7U); // all but the one that is written anew
        EXPECT_TRUE(world.menu().isInstalled());
    }));
}

TEST(FileManagerMenu, OnlyARunningThunarHasToBeRestarted) {
    const MenuWorld world;
    world.addManagers(allManagers);
    world.tree.makeFile("bin/thunar", "#!/bin/sh\necho \"$@\" >>\"$HOME/started\"\n", 0755);
    LinuxFileManagerMenu menu = world.menu();
    EXPECT_THAT(menu.install().toRestart, IsEmpty());
    world.running = {"org.xfce.Thunar", "org.kde.dolphin", "org.Nemo", "org.gnome.Nautilus"};
    const FileManagerChange removed = menu.remove();
    ASSERT_EQ(removed.toRestart.size(), 1U);
    EXPECT_EQ(removed.toRestart.front().path, world.config("Thunar/uca.xml"));
    menu.restart(removed.toRestart);
    EXPECT_TRUE(waitUntil([&] { return readFile(world.tree.home() + "/started") == "--quit\n--daemon\n"; }));
}

} // namespace
} // namespace veilkeep::test
