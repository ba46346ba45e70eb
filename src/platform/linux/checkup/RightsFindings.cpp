#include "format/ErrorText.h"
#include "format/PrintableName.h"
#include "platform/linux/checkup/Findings.h"

namespace veilkeep {
namespace {

using Status = CheckupFinding::Status;
using Answer = PolkitFacts::Answer;

// Worse where the user has switched on that they are used.
Status whenMissing(const CheckupFacts& facts) {
    return facts.rights.areWanted ? Status::Fails : Status::Limited;
}

struct Agent {
    const char* desktop;
    const char* package;
};

// Which desktops bring their own is left out: there it runs as long as the desktop does.
QString agentPackage(const CheckupFacts& facts) {
    constexpr Agent agents[] = {{"KDE", "polkit-kde-agent-1"}, {"MATE", "mate-polkit"},
                                {"LXQt", "lxqt-policykit"},    {"LXDE", "lxpolkit"},
                                {"XFCE", "policykit-1-gnome"}, {"X-Cinnamon", "policykit-1-gnome"}};
    for (const Agent& agent : agents)
        if (isDesktop(facts, {agent.desktop}))
            return agent.package;
    return QStringLiteral("lxpolkit");
}

QString faultOfWorker(const Error& fault) {
    const QString reason =
        fault.systemError != 0 ? errorReason(fault) : QString::fromStdString(fault.operation);
    return QStringLiteral("%1: %2").arg(shownPath(fault.path), reason);
}

bool isActionKnown(const CheckupFacts& facts) {
    const Answer answer = facts.systemBus.polkit.answer;
    return answer == Answer::None ? facts.rights.isPolicyThere : answer != Answer::UnknownAction;
}

} // namespace

CheckupFinding rightsFinding(const CheckupFacts& facts) {
    const PolkitFacts& polkit = facts.systemBus.polkit;
    CheckupFinding finding{"rights", "Administrator rights", whenMissing(facts), {}};
    const QString without = QStringLiteral(" Items that only an administrator may move cannot be hidden.");
    if (!facts.rights.isPkexecThere) {
        finding.meaning = "pkexec is not installed." + without;
        finding.packages = {"pkexec", "polkitd"};
    } else if (isSystemBusAtFault(facts, "polkit cannot be asked." + without, finding)) {
        return finding;
    } else if (polkit.service == ServiceState::Absent) {
        finding.meaning = "polkit is not installed, or cannot be started." + without;
        finding.packages = {"polkitd"};
    } else if (!isActionKnown(facts)) {
        finding.meaning = "polkit does not know the action com.ostrel.Veilkeep.move." + without;
        finding.remedy = "Install Veilkeep for all users, as a package.";
    } else if (facts.rights.workerFault) {
        finding.meaning = QStringLiteral("pkexec may not run this copy's worker (%1).%2")
                              .arg(faultOfWorker(*facts.rights.workerFault), without);
        finding.remedy = "Install Veilkeep for all users, as a package, and use that copy.";
    } else if (polkit.answer == Answer::Refused) {
        finding.meaning = "polkit refuses them in this session." + without;
        finding.remedy = "Try on the desktop itself, or ask the administrator for com.ostrel.Veilkeep.move.";
    } else if (polkit.answer == Answer::None && polkit.service == ServiceState::Running) {
        finding.status = Status::Limited;
        finding.meaning = "polkit did not say in time, or not as it should, whether they can be had.";
    } else {
        finding.status = Status::Works;
        finding.meaning = facts.rights.areWanted
                              ? "polkit can be asked for them, for items that need them."
                              : "polkit could be asked for them; in the preferences they are switched off.";
    }
    return finding;
}

// polkit does not tell who asks for it: known programs are looked for.
CheckupFinding agentFinding(const CheckupFacts& facts) {
    CheckupFinding finding{"agent", "Question for the administrator's password", Status::Works, {}};
    if (facts.systemBus.polkit.answer == Answer::Granted) {
        finding.meaning = "Nobody has to ask: the rights are granted without a question.";
    } else if (!facts.rights.agent.empty()) {
        finding.meaning =
            QStringLiteral("%1 runs, which asks for it.").arg(QString::fromStdString(facts.rights.agent));
    } else if (!facts.surroundings.hasDisplay) {
        finding.status = Status::Limited;
        finding.meaning =
            "There is no screen here for the question, so that administrator rights cannot be had.";
    } else {
        finding.status = whenMissing(facts);
        finding.meaning =
            "No program that asks for it is seen to run: administrator rights cannot be asked for.";
        finding.packages = {agentPackage(facts)};
        finding.remedy = "Install one and start it with the session; most do so at the next login.";
    }
    return finding;
}

} // namespace veilkeep
