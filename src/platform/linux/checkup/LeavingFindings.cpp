#include "platform/linux/checkup/Findings.h"

namespace veilkeep {
namespace {

using Status = CheckupFinding::Status;

CheckupFinding withoutLogind(const CheckupFacts& facts, CheckupFinding finding) {
    finding.status = Status::Fails;
    const QString without = "sleep, shutdown, another user's session and a lock that logind tells are not "
                            "noticed.";
    if (isSystemBusAtFault(facts, without, finding))
        return finding;
    finding.meaning = "logind does not run: " + without;
    finding.packages = {"libpam-systemd"};
    finding.remedy =
        "Install it, or elogind with libpam-elogind where the system starts without systemd, and log "
        "in again.";
    return finding;
}

bool isLogindThere(const CheckupFacts& facts) {
    return facts.systemBus.reach == BusReach::Reached &&
           facts.systemBus.logind.service == ServiceState::Running;
}

QString listOf(const std::vector<std::string>& words) {
    QStringList list;
    for (const std::string& word : words)
        list << QString::fromStdString(word);
    return list.join(QStringLiteral(", "));
}

QString answeringSavers(const SessionBusFacts& bus) {
    QStringList names;
    for (const ScreenSaverFact& saver : bus.screenSavers)
        if (saver.hasAnswered)
            names << saver.name;
    return names.join(QStringLiteral(", "));
}

bool isHintUnknown(const SystemBusFacts& bus) {
    const LogindFacts& logind = bus.logind;
    if (bus.reach == BusReach::Missing)
        return false;
    return !bus.areNamesTold || (logind.service == ServiceState::Running &&
                                 (!logind.isSessionFound || (*logind.isSessionFound && !logind.isLockTold)));
}

bool isLockUnknown(const CheckupFacts& facts) {
    const SessionBusFacts& bus = facts.sessionBus;
    return (bus.reach != BusReach::Missing && !bus.areNamesTold) || isHintUnknown(facts.systemBus);
}

} // namespace

CheckupFinding logindFinding(const CheckupFacts& facts) {
    CheckupFinding finding{"session", "Session", Status::Works, {}};
    const LogindFacts& logind = facts.systemBus.logind;
    if (!isLogindThere(facts))
        return withoutLogind(facts, finding);
    if (!logind.isSessionFound) {
        finding.status = Status::Limited;
        finding.meaning = "logind did not say in time, or not as it should, which session is yours.";
    } else if (!*logind.isSessionFound) {
        finding.status = facts.surroundings.hasDisplay ? Status::Fails : Status::Limited;
        finding.meaning =
            "logind knows no session of yours: a lock that it tells and another user's session are "
            "not noticed.";
        finding.packages = {"libpam-systemd"};
        finding.remedy = "Log in through a display manager or login, not by su or sudo.";
    } else {
        finding.meaning = "logind knows your session: shutdown and another user's session are noticed.";
    }
    return finding;
}

CheckupFinding sleepFinding(const CheckupFacts& facts) {
    CheckupFinding finding{"sleep", "Sleep", Status::Works, {}};
    const LogindFacts& logind = facts.systemBus.logind;
    if (!isLogindThere(facts))
        return withoutLogind(facts, finding);
    if (!logind.canHoldSleep) {
        finding.status = Status::Limited;
        finding.meaning = "logind did not say in time, or not as it should, whether sleep can be held up.";
    } else if (!*logind.canHoldSleep) {
        finding.status = Status::Limited;
        finding.meaning =
            QStringLiteral("Sleep cannot be held up until all is hidden: the last items may be hidden only "
                           "after it. logind says: %1")
                .arg(logind.whyNot);
        finding.remedy =
            "Ask the administrator for the polkit action org.freedesktop.login1.inhibit-delay-sleep.";
    } else {
        finding.meaning = "Sleep and shutdown wait the seconds that hiding takes.";
    }
    return finding;
}

// Which of these counts when is said in LockSigns.h.
CheckupFinding lockFinding(const CheckupFacts& facts) {
    const SessionBusFacts& bus = facts.sessionBus;
    const LogindFacts& logind = facts.systemBus.logind;
    const bool isHinted = logind.isSessionFound.value_or(false) && logind.isLockTold.value_or(false);
    CheckupFinding finding{"lock", "Locked screen", Status::Works, {}};
    const QString savers = answeringSavers(bus);
    if (isHinted && bus.isHintingLockerThere) {
        finding.meaning = "The desktop tells logind when it locks the screen, and logind tells Veilkeep.";
    } else if (!savers.isEmpty()) {
        finding.meaning =
            QStringLiteral("The screen saver tells of it (%1), also of a screen that it covers and "
                           "does not lock.")
                .arg(savers);
    } else if (!bus.screenSavers.empty()) {
        finding.status = Status::Limited;
        finding.meaning = "There is a screen saver, but it did not answer in time, or not as it should.";
        finding.remedy = "Let whatever locks the screen call \"veilkeepctl autohide\" first.";
    } else if (isLockUnknown(facts)) {
        finding.status = Status::Limited;
        finding.meaning =
            "Whether anybody tells when the screen is locked could not be found out: nobody answered in "
            "time, or as they should.";
        finding.remedy = "Try again; where it stays so, let whatever locks the screen call \"veilkeepctl "
                         "autohide\" first.";
    } else if (isHinted) {
        finding.status = Status::Limited;
        finding.meaning =
            "No screen saver that Veilkeep knows runs here: a lock is noticed only where logind tells "
            "of it.";
        finding.remedy = "Lock by \"loginctl lock-session\", with a program that starts the locker on it "
                         "(swayidle, xss-lock), or let the locker call \"veilkeepctl autohide\" first.";
    } else if (!facts.surroundings.hasDisplay) {
        finding.status = Status::Limited;
        finding.meaning = "There is no screen here that could be locked.";
    } else {
        finding.status = Status::Fails;
        finding.meaning = "Nobody here tells when the screen is locked: AutoHide groups stay visible then.";
        finding.remedy = "Let whatever locks the screen call \"veilkeepctl autohide\" first.";
    }
    return finding;
}

CheckupFinding autoHideFinding(const CheckupFacts& facts) {
    const AutoHideFacts& autoHide = facts.autoHide;
    const SessionBusFacts& bus = facts.sessionBus;
    CheckupFinding finding{"autohide", "AutoHide", Status::Works, {}};
    const bool isAnybodyThere = bus.isApplicationThere || bus.isListServed;
    const bool comesAtLogin = autoHide.isWatchEnabled || autoHide.isLaunchedAtLogin;
    if (!autoHide.groups) {
        finding.status = Status::Limited;
        finding.meaning =
            "Whether a group is marked as AutoHide could not be found out: the groups cannot be read.";
        return finding;
    }
    if (*autoHide.groups == 0) {
        finding.meaning = "No group is marked as AutoHide, so nothing is to be hidden by itself.";
        return finding;
    }
    if (!isAnybodyThere) {
        finding.status = comesAtLogin || !bus.areNamesTold ? Status::Limited : Status::Fails;
        finding.meaning =
            bus.areNamesTold
                ? "Neither Veilkeep nor \"veilkeepctl watch\" runs: AutoHide groups stay as they are "
                  "when you leave."
                : "Whether Veilkeep or \"veilkeepctl watch\" runs could not be found out.";
        finding.remedy =
            "Start Veilkeep and let it be launched at login (preferences), or: systemctl --user enable "
            "--now veilkeep-watch";
        return finding;
    }
    finding.meaning = bus.isApplicationThere
                          ? "Veilkeep runs and hides AutoHide groups when you leave."
                          : "\"veilkeepctl watch\" runs, or a command of it: AutoHide groups are "
                            "hidden when you leave.";
    if (!comesAtLogin) {
        finding.meaning += " After the next login nobody does, unless you start it.";
        finding.remedy = "Switch on launching at login in the preferences, or: systemctl --user enable "
                         "veilkeep-watch";
    }
    if (!autoHide.switchedOff.empty()) {
        finding.status = Status::Limited;
        finding.meaning +=
            QStringLiteral(" Switched off in the preferences: %1.").arg(listOf(autoHide.switchedOff));
    }
    return finding;
}

} // namespace veilkeep
