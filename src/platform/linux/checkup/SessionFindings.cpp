#include "format/PrintableName.h"
#include "platform/linux/checkup/Findings.h"

namespace veilkeep {
namespace {

using Status = CheckupFinding::Status;

// How a tray comes to a desktop that has none.
void adviseTray(const CheckupFacts& facts, CheckupFinding& finding) {
    if (isDesktop(facts, {"GNOME", "GNOME-Classic", "ubuntu"})) {
        finding.packages = {"gnome-shell-extension-appindicator"};
        finding.remedy = "Install the extension, log in again, and switch it on in the program Extensions.";
    } else if (isDesktop(facts, {"KDE"})) {
        finding.remedy = "Add the widget \"System Tray\" to the panel.";
    } else if (isDesktop(facts, {"XFCE"})) {
        finding.remedy = "Add \"Status Tray Plugin\" to the panel.";
    } else if (isDesktop(facts, {"MATE"})) {
        finding.remedy = "Add \"Notification Area\" to the panel.";
    } else if (isDesktop(facts, {"LXQt"})) {
        finding.remedy = "Add \"Status Notifier\" to the panel.";
    } else if (isDesktop(facts, {"X-Cinnamon", "Cinnamon"})) {
        finding.remedy = "Add the applet \"XApp Status Applet\" to the panel.";
    } else if (facts.surroundings.isWayland) {
        finding.packages = {"waybar"};
        finding.remedy = "Start a bar that shows StatusNotifier icons, for instance waybar with its module "
                         "\"tray\".";
    } else {
        finding.remedy =
            "Start a panel that shows StatusNotifier icons; one that shows the older XEmbed icons "
            "alone is not enough.";
    }
}

} // namespace

CheckupFinding surroundingsFinding(const CheckupFacts& facts) {
    const SurroundingsFacts& around = facts.surroundings;
    CheckupFinding finding{"desktop", "Desktop", Status::Works, {}};
    if (around.hasDisplay) {
        QStringList names;
        for (const std::string& name : around.desktops)
            names << shownPath(name);
        finding.meaning =
            QStringLiteral("There is a screen for the window (%1, %2).")
                .arg(names.isEmpty() ? QStringLiteral("a desktop without a name") : names.join(':'),
                     around.isWayland ? QStringLiteral("Wayland") : QStringLiteral("X11"));
    } else {
        finding.status = Status::Limited;
        finding.meaning =
            around.isRemote
                ? "You are logged in from afar: the window cannot be shown here, the commands work."
                : "There is no screen here: the window cannot be shown, the commands work.";
        finding.remedy = "To check a desktop, run this in a terminal on it.";
    }
    if (around.isContainer)
        finding.meaning += " This is a container: what is said here holds for it alone.";
    if (around.isRoot)
        finding.meaning += " You are root: what is said here is about root's own list and session.";
    return finding;
}

CheckupFinding sessionBusFinding(const CheckupFacts& facts) {
    CheckupFinding finding{"session-bus", "Session bus", Status::Fails, {}};
    switch (facts.sessionBus.reach) {
    case BusReach::Reached:
        finding.status = facts.sessionBus.areNamesTold ? Status::Works : Status::Limited;
        finding.meaning = facts.sessionBus.areNamesTold
                              ? "Programs of this session can talk to each other."
                              : "The bus did not say in time who is on it, so that the rest stays unknown.";
        if (!facts.sessionBus.areNamesTold)
            finding.remedy = "Try again; where it stays so, log out and in.";
        break;
    case BusReach::Missing:
        finding.meaning = "There is no session bus: commands do not reach a Veilkeep that runs, closing its "
                          "window ends it, and nobody tells of a locked screen.";
        finding.packages = {"dbus-user-session"};
        finding.remedy = "Install it and log in again, or start the session by dbus-run-session.";
        break;
    case BusReach::NotAnswered:
        finding.meaning = "The session bus does not answer, or does not let this user in.";
        finding.remedy = "Log out and in; DBUS_SESSION_BUS_ADDRESS may name another user's bus.";
        break;
    case BusReach::Elsewhere:
        finding.status = Status::Limited;
        finding.meaning = "The session bus is no socket of this machine, and was not asked.";
        break;
    }
    return finding;
}

CheckupFinding trayFinding(const CheckupFacts& facts) {
    const SessionBusFacts& bus = facts.sessionBus;
    CheckupFinding finding{"tray", "Icon in the panel", Status::Fails, {}};
    if (bus.hasTrayHost.value_or(false)) {
        finding.status = Status::Works;
        finding.meaning = "The desktop has a place for the icon.";
        return finding;
    }
    if (!facts.surroundings.hasDisplay) {
        finding.status = Status::Limited;
        finding.meaning = "There is no panel here.";
        return finding;
    }
    if (!bus.areNamesTold || (bus.isTrayThere && !bus.hasTrayHost)) {
        finding.status = Status::Limited;
        finding.meaning =
            "Whether there is a place for the icon could not be found out: nobody answered in time, "
            "or as they should.";
        return finding;
    }
    finding.meaning = "Nothing on this desktop shows the icon; starting Veilkeep again opens its window.";
    adviseTray(facts, finding);
    return finding;
}

} // namespace veilkeep
