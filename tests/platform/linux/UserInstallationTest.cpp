#include "platform/linux/installation/UserInstallation.h"

#include "tests/support/ItemSnapshot.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

namespace veilkeep::test {
namespace {

// Name, kind and rights, content or target of everything in the home.
std::map<std::string, std::pair<unsigned int, std::string>> homeOf(const ScratchTree& tree) {
    std::map<std::string, std::pair<unsigned int, std::string>> all;
    for (const auto& [name, state] : snapshotOf(tree.home()))
        all[name] = {state.mode, state.content};
    return all;
}

class UserInstallationTest : public ::testing::Test {
protected:
    UserInstallationTest() {
        std::filesystem::copy(std::string(VEILKEEP_BUNDLE) + "/Contents/Resources/desktop",
                              m_tree.makeDirectory("V.app/Contents/Resources/desktop"),
                              std::filesystem::copy_options::recursive);
        for (const std::string name : {"Veilkeep", "veilkeepctl"})
            m_tree.makeFile("V.app/Contents/MacOS/" + name, "#!/bin/sh\necho one\n", 0755);
        EXPECT_EQ(::symlink("../MacOS/Veilkeep", m_tree.path("V.app/Contents/Resources/link").c_str()), 0);
        m_tree.makeFile("home/.local/share/other/file", "the user's");
        m_tree.makeDirectory("home/.config/systemd/user/graphical-session.target.wants");
        m_tree.makeDirectory("home/.config/autostart");
    }

    std::string inHome(const std::string& path) const { return m_tree.path("home/" + path); }
    std::vector<std::string> uninstalled() {
        auto uninstalled = m_installation.uninstall();
        EXPECT_TRUE(uninstalled);
        EXPECT_TRUE(!uninstalled || uninstalled->notRemoved.empty());
        return uninstalled ? std::move(uninstalled->kept) : std::vector<std::string>();
    }

    const ScratchTree m_tree;
    const std::string m_entry = inHome(".local/share/applications/com.ostrel.Veilkeep.desktop");
    UserInstallation m_installation{m_tree.path("V.app")};
};

TEST_F(UserInstallationTest, ComesAndGoesWithoutATrace) {
    const auto before = homeOf(m_tree);
    EXPECT_FALSE(m_installation.uninstall());
    ASSERT_TRUE(m_installation.install());
    EXPECT_TRUE(m_installation.isInstalled());
    const std::string program = inHome(".local/lib/veilkeep/Veilkeep.app/Contents/MacOS/Veilkeep");
    EXPECT_NE(readFile(m_entry).find("\nExec=" + program + " %U\nTryExec=" + program + "\n"),
              std::string::npos);
    const std::string unit = inHome(".local/share/systemd/user/veilkeep-watch.service");
    EXPECT_NE(
        readFile(unit).find("\nExecStart=" + program.substr(0, program.rfind('/')) + "/veilkeepctl watch\n"),
        std::string::npos);
    EXPECT_EQ(::symlink(unit.c_str(), inHome(".config/systemd/user/graphical-session.target.wants/"
                                             "veilkeep-watch.service")
                                          .c_str()),
              0);
    EXPECT_EQ(runProgram({"/usr/bin/desktop-file-validate", m_entry}).exitStatus, 0);
    EXPECT_NE(readFile(inHome(".local/share/applications/mimeinfo.cache"))
                  .find("x-scheme-handler/veilkeep=com.ostrel.Veilkeep.desktop"),
              std::string::npos);
    const auto installed = homeOf(m_tree);
    ASSERT_TRUE(m_installation.install()) << "once more";
    EXPECT_EQ(homeOf(m_tree), installed);
    EXPECT_EQ(uninstalled(), std::vector<std::string>());
    EXPECT_EQ(homeOf(m_tree), before);
}

TEST_F(UserInstallationTest, TakesTheFormersPlaceAndLeavesWhatIsNotOurs) {
    const std::string own = m_tree.makeFile("home/.local/bin/veilkeep", "the user's script");
    ASSERT_TRUE(m_installation.install());
    const std::string changed = inHome(".local/share/man/man1/veilkeepctl.1");
    writeFile(changed, "changed");
    m_tree.makeFile("home/.local/lib/veilkeep/Veilkeep.app/Contents/added", "by the user");
    m_tree.makeFile("home/.local/lib/veilkeep/.Veilkeep.app.new/of/a/killed", "run");
    m_tree.makeFile("V.app/Contents/MacOS/veilkeepctl", "#!/bin/sh\necho two\n", 0755);
    ASSERT_TRUE(m_installation.install());
    EXPECT_EQ(runProgram({inHome(".local/bin/veilkeepctl")}).output, "two\n");
    EXPECT_EQ(readFile(own), "the user's script");
    EXPECT_EQ(readFile(changed), "changed");
    EXPECT_EQ(namesIn(inHome(".local/lib/veilkeep")), (std::set<std::string>{"Veilkeep.app", "installed"}));

    const std::string added =
        m_tree.makeFile("home/.local/lib/veilkeep/Veilkeep.app/Contents/new", "by the user");
    const std::string worker = inHome(".local/lib/veilkeep/Veilkeep.app/Contents/MacOS/Veilkeep");
    writeFile(worker, "patched");
    const std::string autostart =
        m_tree.makeFile("home/.config/autostart/mine.desktop", "[Desktop Entry]\nExec=" + worker + "\n");
    const auto kept = uninstalled();
    EXPECT_EQ(std::set<std::string>(kept.begin(), kept.end()),
              (std::set<std::string>{added, autostart, changed, worker}));
    for (const std::string& path : {added, autostart, changed, worker, own})
        EXPECT_TRUE(exists(path)) << path;
    EXPECT_FALSE(exists(m_entry));
    EXPECT_FALSE(exists(inHome(".local/lib/veilkeep/Veilkeep.app/Contents/Resources")));
}

TEST_F(UserInstallationTest, TheFolderOfARunThatWasKilledAtItsBeginningGoesWithTheNext) {
    m_tree.makeDirectory("home/.local/lib/veilkeep");
    ASSERT_TRUE(m_installation.install());
    EXPECT_EQ(uninstalled(), std::vector<std::string>());
    EXPECT_EQ(namesIn(inHome(".local/lib")), std::set<std::string>());
}

// What a run leaves that is killed between its beginning and the switch, or after it.
TEST_F(UserInstallationTest, AKilledUpgradeCanBeTakenBackOrDoneAgain) {
    const auto before = homeOf(m_tree);
    const std::string bundle = inHome(".local/lib/veilkeep/Veilkeep.app"), aside = m_tree.path("aside");
    const std::string manifest = inHome(".local/lib/veilkeep/installed");
    for (const bool isDoneAgain : {false, true}) {
        for (const bool isSwitched : {false, true}) {
            m_tree.makeFile("V.app/Contents/MacOS/veilkeepctl", "one", 0755);
            ASSERT_TRUE(m_installation.install());
            std::filesystem::copy(bundle, aside,
                                  std::filesystem::copy_options::recursive |
                                      std::filesystem::copy_options::copy_symlinks);
            const std::string former = readFile(manifest);
            m_tree.makeFile("V.app/Contents/MacOS/veilkeepctl", "two", 0755);
            ASSERT_TRUE(m_installation.install());
            const std::string line = former.substr(former.find('\n') + 1);
            writeFile(manifest, readFile(manifest) + line); // as until the switch is done
            std::filesystem::rename(isSwitched ? aside : bundle,
                                    inHome(".local/lib/veilkeep/.Veilkeep.app.new"));
            if (!isSwitched)
                std::filesystem::rename(aside, bundle);
            if (isDoneAgain) {
                ASSERT_TRUE(m_installation.install());
                EXPECT_EQ(readFile(bundle + "/Contents/MacOS/veilkeepctl"), "two");
            }
            EXPECT_EQ(uninstalled(), std::vector<std::string>());
            EXPECT_EQ(homeOf(m_tree), before) << isSwitched << isDoneAgain;
        }
    }
}

TEST_F(UserInstallationTest, ADamagedManifestIsLeftAlone) {
    ASSERT_TRUE(m_installation.install());
    const std::string manifest = inHome(".local/lib/veilkeep/installed");
    writeFile(manifest, readFile(manifest) + "rubbish\n");
    const auto before = homeOf(m_tree);
    const auto installed = m_installation.install();
    ASSERT_FALSE(installed);
    EXPECT_EQ(installed.error(), Error::damaged("read what was installed", manifest));
    EXPECT_FALSE(m_installation.uninstall());
    EXPECT_EQ(homeOf(m_tree), before);
}

TEST_F(UserInstallationTest, WhatCannotBeRemovedIsToldAndTriedAgain) {
    ASSERT_TRUE(m_installation.install());
    const std::string manual = inHome(".local/share/man/man1");
    {
        const PrivateMount readOnly(manual, manual, "", MS_BIND);
        if (!readOnly.whyMissing().empty() ||
            ::mount("none", manual.c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) != 0)
            GTEST_SKIP() << "no read-only mount here";
        const auto first = m_installation.uninstall();
        ASSERT_TRUE(first);
        EXPECT_EQ(first->kept, std::vector<std::string>());
        EXPECT_EQ(first->notRemoved,
                  (std::vector<Error>{Error::system("unlink", manual + "/veilkeep.1", EROFS),
                                      Error::system("unlink", manual + "/veilkeepctl.1", EROFS)}));
    }
    EXPECT_EQ(uninstalled(), std::vector<std::string>());
    EXPECT_FALSE(exists(inHome(".local/lib")));
    EXPECT_EQ(namesIn(inHome(".local/share")), std::set<std::string>{"other"});
}

// Where a step fails everything is as before, be there a former one or not.
TEST_F(UserInstallationTest, AFailureLeavesNothingHalfInstalled) {
    const std::string service =
        m_tree.path("V.app/Contents/Resources/desktop/com.ostrel.Veilkeep.service.in");
    const auto cannotBeInstalled = [&](const char* what) {
        const auto before = homeOf(m_tree);
        EXPECT_FALSE(m_installation.install()) << what;
        EXPECT_EQ(homeOf(m_tree), before) << what;
    };
    const auto failInManyWays = [&] {
        std::filesystem::rename(service, service + ".away");
        cannotBeInstalled("a template is missing");
        std::filesystem::rename(service + ".away", service);
        ::mkfifo(m_tree.path("V.app/fifo").c_str(), 0600);
        cannotBeInstalled("what cannot be copied");
        ::unlink(m_tree.path("V.app/fifo").c_str());
        ASSERT_EQ(::symlink("..", m_tree.path("V.app/loop").c_str()), 0);
        cannotBeInstalled("a loop");
        ::unlink(m_tree.path("V.app/loop").c_str());
        const PrivateMount readOnly("none", m_tree.makeDirectory("home/.local/share/man"), "tmpfs",
                                    MS_RDONLY);
        if (readOnly.whyMissing().empty() && !exists(m_entry))
            cannotBeInstalled("a place that cannot be written");
    };
    failInManyWays();
    ASSERT_TRUE(m_installation.install());
    m_tree.makeFile("V.app/Contents/MacOS/veilkeepctl", "#!/bin/sh\necho two\n", 0755);
    failInManyWays();
    EXPECT_EQ(runProgram({inHome(".local/bin/veilkeepctl")}).output, "one\n");
}

} // namespace
} // namespace veilkeep::test
