#include "platform/linux/checkup/Findings.h"

#include "platform/linux/checkup/Checkup.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cerrno>

namespace veilkeep::test {
namespace {

using Status = CheckupFinding::Status;
using Answer = PolkitFacts::Answer;
using State = MenuEntry::State;
using Finding = CheckupFinding (*)(const CheckupFacts&);
using Change = void (*)(CheckupFacts&);

// A desktop that lacks nothing, with a list and AutoHide groups.
CheckupFacts wholeDesktop() {
    CheckupFacts facts;
    facts.surroundings = {.desktops = {"GNOME"}, .hasDisplay = true, .isWayland = true};
    facts.sessionBus = {.reach = BusReach::Reached,
                        .areNamesTold = true,
                        .isTrayThere = true,
                        .hasTrayHost = true,
                        .screenSavers = {{"org.gnome.ScreenSaver", true}},
                        .isHintingLockerThere = true,
                        .isApplicationThere = true,
                        .isListServed = true};
    facts.systemBus = {.reach = BusReach::Reached,
                       .areNamesTold = true,
                       .logind = {ServiceState::Running, true, true, true, {}},
                       .polkit = {ServiceState::Running, Answer::AfterQuestion},
                       .udisks = ServiceState::Startable,
                       .packageKit = ServiceState::Startable};
    facts.rights = {true, true, true, "gnome-shell", std::nullopt};
    facts.data = {.directory = "/home/u/.local/share/Veilkeep",
                  .isThere = true,
                  .trouble = std::nullopt,
                  .owner = ::geteuid(),
                  .mode = 0700,
                  .freeBytes = std::uint64_t{1} << 30,
                  .damagedCopies = {},
                  .list = {"/l", true, std::nullopt},
                  .groups = {"/g", true, std::nullopt},
                  .settings = {"/s", true, std::nullopt}};
    facts.autoHide = {1, false, true, {}};
    facts.menuEntries = {{"Nautilus", "/n", State::Current}};
    facts.program = {.bundle = "/usr/lib/veilkeep/Veilkeep.app",
                     .missing = {},
                     .ownVersion = "1",
                     .bundleVersion = "1",
                     .otherBundle = {},
                     .otherVersion = {},
                     .qtPlugins = "/p",
                     .hasSvgImages = true,
                     .hasXcb = true,
                     .hasWayland = true,
                     .language = "de",
                     .hasQtTranslation = true};
    return facts;
}

struct Row {
    const char* name;
    Finding finding;
    Change change;
    Status status;
    const char* says;         // part of what it means, or of what to do
    const char* package = ""; // the first one
};

void unknownNames(CheckupFacts& facts) {
    facts.sessionBus = {.reach = BusReach::Reached};
    facts.systemBus = {.reach = BusReach::Reached};
}
void noBuses(CheckupFacts& facts) {
    facts.sessionBus = {};
    facts.systemBus = {};
}
void noTray(CheckupFacts& facts) {
    facts.sessionBus.isTrayThere = false;
    facts.sessionBus.hasTrayHost.reset();
}
void noSaver(CheckupFacts& facts) {
    facts.sessionBus.screenSavers.clear();
    facts.sessionBus.isHintingLockerThere = false;
}
void remote(CheckupFacts& facts) {
    facts.surroundings = {.isRemote = true};
    noTray(facts);
    noSaver(facts);
    facts.rights.agent.clear();
}
void nobodyListens(CheckupFacts& facts) {
    facts.sessionBus.isApplicationThere = facts.sessionBus.isListServed = false;
    facts.autoHide.isLaunchedAtLogin = false;
}

constexpr auto works = Status::Works, limited = Status::Limited, fails = Status::Fails;

const Row rows[] = {
    {"ssh", surroundingsFinding, remote, limited, "from afar"},
    {"no bus", sessionBusFinding, noBuses, fails, "no session bus", "dbus-user-session"},
    {"dead bus", sessionBusFinding, [](CheckupFacts& f) { f.sessionBus = {BusReach::NotAnswered}; }, fails,
     "does not answer"},
    {"slow bus", sessionBusFinding, unknownNames, limited, "in time"},
    {"tray, GNOME", trayFinding, noTray, fails, "Extensions", "gnome-shell-extension-appindicator"},
    {"tray, sway", trayFinding,
     [](CheckupFacts& f) {
         noTray(f);
         f.surroundings.desktops = {"sway"};
     },
     fails, "module", "waybar"},
    {"silent tray", trayFinding, [](CheckupFacts& f) { f.sessionBus.hasTrayHost.reset(); }, limited,
     "could not be found out"},
    {"tray, ssh", trayFinding, remote, limited, "no panel"},
    {"no system bus", logindFinding, noBuses, fails, "system bus cannot be reached", "dbus"},
    {"dead system bus", sleepFinding, [](CheckupFacts& f) { f.systemBus = {BusReach::NotAnswered}; }, fails,
     "does not answer"},
    {"far system bus", logindFinding, [](CheckupFacts& f) { f.systemBus = {BusReach::Elsewhere}; }, limited,
     "not asked"},
    {"rights, no system bus", rightsFinding, noBuses, fails, "polkit cannot be asked", "dbus"},
    {"rights, far system bus", rightsFinding, [](CheckupFacts& f) { f.systemBus = {BusReach::Elsewhere}; },
     limited, "not asked"},
    {"no logind", logindFinding, [](CheckupFacts& f) { f.systemBus.logind.service = ServiceState::Absent; },
     fails, "does not run", "libpam-systemd"},
    {"no session", logindFinding, [](CheckupFacts& f) { f.systemBus.logind.isSessionFound = false; }, fails,
     "no session of yours", "libpam-systemd"},
    {"sleep refused", sleepFinding,
     [](CheckupFacts& f) {
         f.systemBus.logind.canHoldSleep = false;
         f.systemBus.logind.whyNot = "Permission denied";
     },
     limited, "Permission denied"},
    {"saver without logind", lockFinding, [](CheckupFacts& f) { f.systemBus = {}; }, works,
     "org.gnome.ScreenSaver"},
    {"silent saver", lockFinding,
     [](CheckupFacts& f) {
         noSaver(f);
         f.sessionBus.screenSavers = {{"org.freedesktop.ScreenSaver", false}};
     },
     limited, "did not answer"},
    {"nobody tells of a lock", lockFinding,
     [](CheckupFacts& f) {
         noSaver(f);
         f.systemBus.logind.isLockTold = false;
     },
     fails, "stay visible"},
    {"lock, slow session bus", lockFinding, [](CheckupFacts& f) { f.sessionBus = {BusReach::Reached}; },
     limited, "could not be found out"},
    {"lock, slow system bus", lockFinding,
     [](CheckupFacts& f) {
         noSaver(f);
         f.systemBus = {BusReach::Reached};
     },
     limited, "could not be found out"},
    {"lock, silent logind", lockFinding,
     [](CheckupFacts& f) {
         noSaver(f);
         f.systemBus.logind.isLockTold.reset();
     },
     limited, "could not be found out"},
    {"no groups", autoHideFinding,
     [](CheckupFacts& f) {
         nobodyListens(f);
         f.autoHide.groups = 0;
     },
     works, "No group"},
    {"unknown groups", autoHideFinding, [](CheckupFacts& f) { f.autoHide.groups.reset(); }, limited,
     "could not be found out"},
    {"nobody listens", autoHideFinding, nobodyListens, fails, "veilkeep-watch"},
    {"listens after login", autoHideFinding,
     [](CheckupFacts& f) {
         nobodyListens(f);
         f.autoHide.isWatchEnabled = true;
     },
     limited, "Neither"},
    {"watch listens", autoHideFinding,
     [](CheckupFacts& f) { f.sessionBus.isApplicationThere = f.autoHide.isLaunchedAtLogin = false; }, works,
     "After the next login nobody"},
    {"lock switched off", autoHideFinding,
     [](CheckupFacts& f) { f.autoHide.switchedOff = {"the locked screen"}; }, limited, "the locked screen"},
    {"no pkexec", rightsFinding, [](CheckupFacts& f) { f.rights.isPkexecThere = false; }, fails, "pkexec",
     "pkexec"},
    {"no pkexec, not wanted", rightsFinding, [](CheckupFacts& f) { f.rights = {.agent = "x"}; }, limited,
     "pkexec", "pkexec"},
    {"no polkit", rightsFinding, [](CheckupFacts& f) { f.systemBus.polkit = {}; }, fails, "polkit",
     "polkitd"},
    {"sleeping polkit", rightsFinding,
     [](CheckupFacts& f) {
         f.systemBus.polkit = {ServiceState::Startable, Answer::None};
     },
     works, "asked"},
    {"sleeping polkit, no policy", rightsFinding,
     [](CheckupFacts& f) {
         f.systemBus.polkit = {ServiceState::Startable, Answer::None};
         f.rights.isPolicyThere = false;
     },
     fails, "does not know the action"},
    {"worker of a user's", rightsFinding,
     [](CheckupFacts& f) {
         f.rights.workerFault = Error{ErrorCode::InvalidArgument, "not owned by root", "/home/u/w", 0};
     },
     fails, "/home/u/w: not owned by root"},
    {"no agent", agentFinding, [](CheckupFacts& f) { f.rights.agent.clear(); }, fails, "seen to run",
     "lxpolkit"},
    {"no agent, nobody has to ask", agentFinding,
     [](CheckupFacts& f) {
         f.rights.agent.clear();
         f.systemBus.polkit.answer = Answer::Granted;
     },
     works, "without a question"},
    {"no udisks", disksFinding, [](CheckupFacts& f) { f.systemBus.udisks = ServiceState::Absent; }, limited,
     "by hand", "udisks2"},
    {"no list yet", dataFinding, [](CheckupFacts& f) { f.data.isThere = false; }, works, "will be made"},
    {"not writable", dataFinding,
     [](CheckupFacts& f) { f.data.trouble = Error::system("access", "/d", EROFS); }, fails,
     "/d: Read-only file system"},
    {"damaged list", dataFinding, [](CheckupFacts& f) { f.data.list.trouble = Error::damaged("x", "/l"); },
     fails, "/l: The file is damaged."},
    {"another user's list", dataFinding, [](CheckupFacts& f) { ++f.data.owner; }, fails, "another user"},
    {"full disk", dataFinding, [](CheckupFacts& f) { f.data.freeBytes = 0; }, fails, "full"},
    {"open list", dataFinding, [](CheckupFacts& f) { f.data.mode = 0750; }, limited, "chmod 700"},
    {"damaged copy", dataFinding, [](CheckupFacts& f) { f.data.damagedCopies = {"L.damaged-1\n"}; }, limited,
     "1 damaged copy is kept beside it: L.damaged-1\\n"},
    {"damaged settings", settingsFinding,
     [](CheckupFacts& f) { f.data.settings.trouble = Error::damaged("x", "/s"); }, fails, "password"},
    {"no worker", programFinding, [](CheckupFacts& f) { f.program.missing = {"cloakWorker"}; }, fails,
     "no item can be hidden"},
    {"mixed versions", programFinding, [](CheckupFacts& f) { f.program.bundleVersion = "2"; }, limited,
     "different versions"},
    {"half of them", fileManagersFinding,
     [](CheckupFacts& f) {
         f.menuEntries.push_back({"Nemo", "/m", State::Absent});
     },
     limited, "lack them"},
    {"foreign entry", fileManagersFinding, [](CheckupFacts& f) { f.menuEntries[0].state = State::Foreign; },
     limited, "/n (not Veilkeep's"},
    {"neither wayland nor xcb", windowFinding,
     [](CheckupFacts& f) { f.program.hasWayland = f.program.hasXcb = false; }, fails, "Xwayland",
     "qt6-wayland"},
    {"no wayland needed", windowFinding,
     [](CheckupFacts& f) { f.surroundings.isWayland = f.program.hasWayland = false; }, works, "All parts"},
    {"no SVG", windowFinding, [](CheckupFacts& f) { f.program.hasSvgImages = false; }, limited, "SVG",
     "libqt6svg6"},
    {"no PackageKit", updatesFinding, [](CheckupFacts& f) { f.systemBus.packageKit = ServiceState::Absent; },
     limited, "apt", "packagekit"},
};

TEST(FindingsTest, NothingIsWrongWithAWholeDesktop) {
    for (const CheckupFinding& finding : findingsFrom(wholeDesktop())) {
        EXPECT_EQ(finding.status, works) << finding.check.toStdString();
        EXPECT_FALSE(finding.meaning.isEmpty()) << finding.check.toStdString();
        EXPECT_TRUE(finding.packages.isEmpty()) << finding.check.toStdString();
    }
}

TEST(FindingsTest, EachFaultIsToldWithWhatCanBeDone) {
    for (const Row& row : rows) {
        CheckupFacts facts = wholeDesktop();
        row.change(facts);
        const CheckupFinding finding = row.finding(facts);
        EXPECT_EQ(finding.status, row.status) << row.name;
        EXPECT_TRUE((finding.meaning + finding.remedy).contains(row.says))
            << row.name << ": " << finding.meaning.toStdString() << " | " << finding.remedy.toStdString();
        EXPECT_EQ(finding.packages.value(0), row.package) << row.name;
    }
}

} // namespace
} // namespace veilkeep::test
