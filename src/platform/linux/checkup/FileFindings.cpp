#include "format/ErrorText.h"
#include "format/PrintableName.h"
#include "platform/linux/checkup/Findings.h"

#include <unistd.h>

#include <algorithm>

namespace veilkeep {
namespace {

using Status = CheckupFinding::Status;
using State = MenuEntry::State;

constexpr std::uint64_t littleSpace = std::uint64_t{16} << 20; // a large list and its copies
constexpr unsigned int ownersAlone = 0077;

// Whatever stands in the way of reading or writing; nothing where nothing does.
std::optional<QString> troubleWithData(const DataFacts& data) {
    if (data.trouble)
        return errorWithPath(*data.trouble);
    for (const ListFileFacts* file : {&data.list, &data.groups})
        if (file->trouble)
            return errorWithPath(*file->trouble);
    return std::nullopt;
}

QString plural(std::size_t count, const char* one, const char* many) {
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : many));
}

} // namespace

CheckupFinding dataFinding(const CheckupFacts& facts) {
    const DataFacts& data = facts.data;
    CheckupFinding finding{"list", "List of items", Status::Fails, {}};
    const QString directory = shownPath(data.directory);
    if (data.directory.empty()) {
        finding.meaning = "There is no home directory, and so no place for the list.";
        finding.remedy = "Set HOME, or XDG_DATA_HOME, to an absolute path.";
    } else if (const auto trouble = troubleWithData(data)) {
        finding.meaning = QStringLiteral("The list cannot be read or saved (%1).").arg(*trouble);
        finding.remedy =
            "Nothing is lost by that: a damaged list is kept under a dated name, and hidden items are "
            "found by \"veilkeepctl restore DIRECTORY\".";
    } else if (!data.isThere) {
        finding.status = Status::Works;
        finding.meaning = QStringLiteral("There is no list yet; it will be made in %1.").arg(directory);
    } else if (data.owner != ::geteuid()) {
        finding.meaning = QStringLiteral("%1 belongs to another user (%2).").arg(directory).arg(data.owner);
        finding.remedy = QStringLiteral("An administrator gives it back: chown -R USER %1").arg(directory);
    } else if (data.freeBytes < littleSpace) {
        finding.status = data.freeBytes == 0 ? Status::Fails : Status::Limited;
        finding.meaning = "The disk with the list is all but full: what cannot be saved is not hidden.";
        finding.remedy = "Make room.";
    } else if ((data.mode & ownersAlone) != 0) {
        finding.status = Status::Limited;
        finding.meaning =
            QStringLiteral("Others may look into %1, where the names of items are.").arg(directory);
        finding.remedy = QStringLiteral("chmod 700 %1").arg(directory);
    } else if (!data.damagedCopies.empty()) {
        finding.status = Status::Limited;
        finding.meaning = QStringLiteral("The list is whole; %1 kept beside it: %2.")
                              .arg(plural(data.damagedCopies.size(), "damaged copy is", "damaged copies are"),
                                   shownPath(data.damagedCopies.front()));
        finding.remedy = "Delete it in the list's directory once nothing is missed; \"veilkeepctl restore "
                         "DIRECTORY\" finds hidden items that are not listed.";
    } else {
        finding.status = Status::Works;
        finding.meaning =
            QStringLiteral("The list in %1 can be read and saved, by you alone.").arg(directory);
    }
    return finding;
}

CheckupFinding settingsFinding(const CheckupFacts& facts) {
    const ListFileFacts& settings = facts.data.settings;
    CheckupFinding finding{"settings", "Settings", Status::Works, {}};
    if (settings.trouble) {
        finding.status = Status::Fails;
        finding.meaning =
            QStringLiteral("The settings cannot be read and count as not set, the password too (%1).")
                .arg(errorWithPath(*settings.trouble));
        finding.remedy = "Damaged ones are put aside by the next start; please set the password again then.";
    } else {
        finding.meaning = settings.isThere ? "The settings can be read." : "Nothing is set yet.";
    }
    return finding;
}

CheckupFinding fileManagersFinding(const CheckupFacts& facts) {
    CheckupFinding finding{"file-managers", "Entries in file managers", Status::Works, {}};
    QStringList names, faults;
    bool isAnyInstalled = false, isAnyAbsent = false;
    for (const MenuEntryFact& entry : facts.menuEntries) {
        names << QString::fromStdString(entry.manager);
        isAnyInstalled = isAnyInstalled || entry.state != State::Absent;
        isAnyAbsent = isAnyAbsent || entry.state == State::Absent;
        const char* const fault = entry.state == State::Outdated  ? "of another version or copy"
                                  : entry.state == State::Changed ? "changed since, and left so"
                                  : entry.state == State::Foreign ? "not Veilkeep's, or not to be read"
                                                                  : nullptr;
        if (fault)
            faults << QStringLiteral("%1 (%2)").arg(shownPath(entry.path), QLatin1String(fault));
    }
    names.removeDuplicates();
    if (names.isEmpty()) {
        finding.meaning = "There is no file manager here that can have entries.";
    } else if (!isAnyInstalled) {
        finding.meaning =
            QStringLiteral("There are none; %1 can have them.").arg(names.join(QStringLiteral(", ")));
        finding.remedy = "To have them, switch them on in Veilkeep's preferences.";
    } else if (!faults.isEmpty() || isAnyAbsent) {
        finding.status = Status::Limited;
        finding.meaning =
            faults.isEmpty()
                ? QStringLiteral("Some of the file managers here lack them (%1).")
                      .arg(names.join(QStringLiteral(", ")))
                : QStringLiteral("Not as they should be: %1.").arg(faults.join(QStringLiteral(", ")));
        finding.remedy =
            "Start Veilkeep, which renews its own, or switch them off and on in the preferences; delete "
            "by hand what was changed.";
    } else {
        finding.meaning = QStringLiteral("They are there for %1.").arg(names.join(QStringLiteral(", ")));
    }
    return finding;
}

CheckupFinding disksFinding(const CheckupFacts& facts) {
    CheckupFinding finding{"disks", "Disks that are not mounted", Status::Limited, {}};
    if (facts.systemBus.areNamesTold && facts.systemBus.udisks != ServiceState::Absent) {
        finding.status = Status::Works;
        finding.meaning = "udisks can mount a disk that a hidden item lies on.";
    } else if (facts.systemBus.areNamesTold) {
        finding.meaning = "udisks is not there: a disk with items on it has to be mounted by hand first.";
        finding.packages = {"udisks2"};
    } else {
        finding.meaning = "Whether udisks is there could not be found out: the system bus gave no answer.";
    }
    return finding;
}

} // namespace veilkeep
