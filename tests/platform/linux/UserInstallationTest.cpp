#include "platform/linux/installation/UserInstallation.h"

#include "platform/linux/AutostartEntry.h"
#include "tests/support/ItemSnapshot.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

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
        m_tree.makeDirectory("home/.config/systemd/user");
    }

    std::string inHome(const std::string& path) const { return m_tree.path("home/" + path); }
    std::vector<std::string> uninstalled() {
        auto kept = m_installation.uninstall();
        EXPECT_TRUE(kept);
        return kept ? std::move(*kept) : std::vector<std::string>();
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
    EXPECT_EQ(runProgram({inHome(".local/bin/veilkeep")}).output, "one\n");
    EXPECT_NE(readFile(m_entry).find("\nExec=" + program + " %U\nTryExec=" + program + "\n"),
              std::string::npos);
    EXPECT_NE(readFile(inHome(".local/share/dbus-1/services/com.ostrel.Veilkeep.service"))
                  .find("\nExec=" + program + " --service\n"),
              std::string::npos);
    const std::string unit = inHome(".local/share/systemd/user/veilkeep-watch.service");
    EXPECT_NE(
        readFile(unit).find("\nExecStart=" + program.substr(0, program.rfind('/')) + "/veilkeepctl watch\n"),
        std::string::npos);
    m_tree.makeDirectory("home/.config/systemd/user/graphical-session.target.wants");
    EXPECT_EQ(::symlink(unit.c_str(), inHome(".config/systemd/user/graphical-session.target.wants/"
                                             "veilkeep-watch.service")
                                          .c_str()),
              0);
    EXPECT_EQ(runProgram({"/usr/bin/desktop-file-validate", m_entry}).exitStatus, 0);
    EXPECT_TRUE(AutostartEntry(inHome(".local/lib/veilkeep/Veilkeep.app")).setShouldLaunchAtLogin(true));
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
