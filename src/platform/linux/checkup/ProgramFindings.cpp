#include "format/PrintableName.h"
#include "platform/linux/checkup/Findings.h"

namespace veilkeep {
namespace {

using Status = CheckupFinding::Status;

bool isMissing(const ProgramFacts& program, const char* name) {
    for (const std::string& missing : program.missing)
        if (missing == name)
            return true;
    return false;
}

} // namespace

CheckupFinding programFinding(const CheckupFacts& facts) {
    const ProgramFacts& program = facts.program;
    CheckupFinding finding{"program", "Program", Status::Works, {}};
    const QString bundle = shownPath(program.bundle);
    const QString again = QStringLiteral("Install Veilkeep again.");
    if (program.bundle.empty()) {
        finding.status = Status::Fails;
        finding.meaning =
            "This program does not lie in Veilkeep.app, and finds no worker to move items with.";
        finding.remedy = again;
    } else if (!program.missing.empty()) {
        const bool isWorker = isMissing(program, "cloakWorker");
        finding.status = isWorker ? Status::Fails : Status::Limited;
        QStringList names;
        for (const std::string& name : program.missing)
            names << QString::fromStdString(name);
        finding.meaning = QStringLiteral("%1 lacks %2, or may not run it: %3")
                              .arg(bundle, names.join(QStringLiteral(", ")),
                                   isWorker ? "no item can be hidden or brought back."
                                            : "the window, or cleaning of traces, is not to be had.");
        finding.remedy = again;
    } else if (program.bundleVersion != program.ownVersion) {
        finding.status = Status::Limited;
        finding.meaning = QStringLiteral("The parts of %1 are of different versions (%2 and %3).")
                              .arg(bundle, QString::fromStdString(program.ownVersion),
                                   program.bundleVersion.empty() ? QStringLiteral("an unknown one")
                                                                 : shownPath(program.bundleVersion));
        finding.remedy = again;
    } else if (!program.otherBundle.empty() && program.otherVersion != program.ownVersion) {
        finding.status = Status::Limited;
        finding.meaning = QStringLiteral("This is %1 in %2; there is also %3 in %4.")
                              .arg(QString::fromStdString(program.ownVersion), bundle,
                                   shownPath(program.otherVersion), shownPath(program.otherBundle));
        finding.remedy =
            "Keep one: \"veilkeepctl uninstall\" removes a copy of your own, apt that of all users.";
    } else {
        finding.meaning = QStringLiteral("Version %1 in %2 is whole.")
                              .arg(QString::fromStdString(program.ownVersion), bundle);
    }
    return finding;
}

CheckupFinding windowFinding(const CheckupFacts& facts) {
    const ProgramFacts& program = facts.program;
    CheckupFinding finding{"window", "Parts of the window", Status::Works, {}};
    QStringList lacks;
    if (facts.surroundings.isWayland && !program.hasWayland) {
        lacks << QStringLiteral("Wayland is not spoken, so that it goes through Xwayland or not at all");
        finding.packages << "qt6-wayland";
    }
    if (facts.surroundings.hasDisplay && !facts.surroundings.isWayland && !program.hasXcb) {
        lacks << QStringLiteral("X11 is not spoken, so that it cannot be shown");
        finding.packages << "libqt6gui6";
    }
    if (!program.hasSvgImages) {
        lacks << QStringLiteral("SVG images show no preview, and cannot be icons of groups");
        finding.packages << "libqt6svg6";
    }
    if (!program.hasQtTranslation) {
        lacks << QStringLiteral("buttons and file dialogs stay English");
        finding.packages << "qt6-translations-l10n";
    }
    if (lacks.isEmpty()) {
        finding.meaning = "All parts of Qt that it loads are there.";
        return finding;
    }
    const bool cannotBeShown = finding.packages.contains(QStringLiteral("libqt6gui6")) ||
                               (facts.surroundings.isWayland && !program.hasWayland && !program.hasXcb);
    finding.status = cannotBeShown ? Status::Fails : Status::Limited;
    finding.meaning = QStringLiteral("Parts are missing: %1.").arg(lacks.join(QStringLiteral("; ")));
    return finding;
}

CheckupFinding updatesFinding(const CheckupFacts& facts) {
    CheckupFinding finding{"updates", "Search for updates", Status::Limited, {}};
    if (!facts.systemBus.areNamesTold) {
        finding.meaning =
            "Whether PackageKit is there could not be found out: the system bus gave no answer.";
    } else if (facts.systemBus.packageKit == ServiceState::Absent) {
        finding.meaning = "PackageKit is not there: \"Check for Updates\" finds nothing; apt does.";
        finding.packages = {"packagekit"};
    } else {
        finding.status = Status::Works;
        finding.meaning = "PackageKit can be asked for a newer version.";
    }
    return finding;
}

} // namespace veilkeep
