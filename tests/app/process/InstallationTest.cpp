#include "tests/app/process/ProcessWorld.h"

#include "platform/linux/AutostartEntry.h"
#include "platform/linux/filemanagers/LinuxFileManagerMenu.h"
#include "platform/linux/installation/UserInstallation.h"
#include "tests/support/ItemSnapshot.h"

#include <QVariantMap>

#include <signal.h>

#include <algorithm>
#include <map>

namespace veilkeep::test {
namespace {

// The whole way of a copy that was unpacked somewhere.
class InstallationTest : public ProcessWorld {
protected:
    void SetUp() override {
        ProcessWorld::SetUp();
        stopSessionBus();
        m_bus.emplace(m_tree, PrivateBus::Place::Session, inHome(".local/share/dbus-1/services"));
        setOffersToInstall(true);
        EXPECT_EQ(ctl({"add", m_item}).exitStatus, 0); // the program's own places are there
    }

    std::string inHome(const std::string& path) const { return m_tree.path("home/" + path); }

    // What is in the home, but what Veilkeep keeps for its user.
    std::map<std::string, std::string> home() const {
        std::map<std::string, std::string> all;
        for (const auto& [name, state] : snapshotOf(m_tree.home())) {
            const auto isBelow = [&name = name](const char* place) { return name.starts_with(place); };
            const char* const own[] = {".local/share/Veilkeep", ".local/state", ".config/com.ostrel",
                                       ".cache"};
            if (std::ranges::none_of(own, isBelow))
                all[name] = std::to_string(state.mode) + state.content;
        }
        return all;
    }

    bool quitsWithOffer() {
        return waitUntil([this] { // not while it still looks for its items
                   m_screen.key("Control_L+q");
                   const auto asks = [this] {
                       return std::ranges::any_of(m_screen.windowsOf(process()), &Screen::Window::isDialog);
                   };
                   return waitUntil(asks, std::chrono::seconds(2));
               }) &&
               m_screen.waitForDialog();
    }

    // By one that was there before, and whose directory of services was not.
    bool isStartedByTheBus() const {
        EXPECT_EQ(call("Activate", {QVariantMap()}), QString());
        const auto shown = window();
        return shown && ::kill(shown->process, SIGTERM) == 0 &&
               waitUntil([&] { return ::kill(shown->process, 0) != 0; });
    }

    void startInstalled() {
        m_application = std::make_unique<BackgroundProgram>(std::vector{m_program});
        ASSERT_TRUE(window());
        EXPECT_TRUE(becomesListed(m_item));
    }

    ProgramRun installedCtl(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), inHome(".local/bin/veilkeepctl"));
        return runProgram(arguments, {0, m_tree.root(), {}});
    }

    const std::string m_item = m_tree.makeFile("Docs/a.txt", "content");
    const std::string m_program = inHome(".local/lib/veilkeep/Veilkeep.app/Contents/MacOS/Veilkeep");
};

TEST_F(InstallationTest, FromTheOfferToItsRemoval) {
    m_tree.makeDirectory("home/.config/autostart");
    const auto before = home();
    ASSERT_TRUE(startToWindow());
    EXPECT_EQ(end(SIGTERM), 0) << "a signal asks nothing";
    ASSERT_TRUE(startToWindow());
    ASSERT_TRUE(quitsWithOffer());
    EXPECT_EQ(end(SIGTERM), 0) << "and answers what is open";
    EXPECT_EQ(home(), before);

    ASSERT_TRUE(startToWindow());
    ASSERT_TRUE(quitsWithOffer());
    m_screen.key("Return");
    EXPECT_EQ(end(0), 0);
    EXPECT_TRUE(exists(m_program));
    EXPECT_EQ(installedCtl({"list"}).output, "visible\t" + m_item + "\n");
    EXPECT_EQ(runProgram({inHome(".local/bin/veilkeep"), "--self-test"}).exitStatus, 0);

    EXPECT_TRUE(isStartedByTheBus());
    startInstalled();
    EXPECT_EQ(installedCtl({"uninstall", "--yes"}).exitStatus, 3) << "while it runs";
    ASSERT_TRUE(UserInstallation(VEILKEEP_BUNDLE).install()) << "over the running one";
    EXPECT_EQ(installedCtl({"hide", m_item}).exitStatus, 0) << "by the running one's worker";
    EXPECT_TRUE(exists(inHome(".local/lib/veilkeep/Veilkeep.app")));
    EXPECT_NE(installedCtl({"status"}).output.find("owner\tapplication"), std::string::npos);
    m_screen.key("Control_L+q");
    EXPECT_EQ(end(0), 0) << "an installed one asks nothing";

    const std::string bundle = inHome(".local/lib/veilkeep/Veilkeep.app");
    EXPECT_TRUE(AutostartEntry(bundle).setShouldLaunchAtLogin(true));
    EXPECT_FALSE(LinuxFileManagerMenu({.bundle = bundle, .version = "1"}).install().hasFailed());
    const ProgramRun asked = installedCtl({"uninstall"});
    EXPECT_EQ(asked.exitStatus, 3) << "nobody agreed";
    EXPECT_NE(asked.errors.find("unhide --all"), std::string::npos) << asked.errors;
    const ProgramRun removed = installedCtl({"uninstall", "--yes"});
    EXPECT_EQ(removed.exitStatus, 0) << removed.errors;
    EXPECT_EQ(home(), before);
    EXPECT_EQ(ctl({"uninstall", "--yes"}).exitStatus, 3) << "there is none";
    EXPECT_EQ(listed(), "hidden\t" + m_item + "\n");
}

} // namespace
} // namespace veilkeep::test
