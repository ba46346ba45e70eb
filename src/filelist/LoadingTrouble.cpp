#include "filelist/LoadingTrouble.h"

#include "core/base/PathText.h"
#include "core/filesystem/ItemAtPath.h"
#include "filelist/Texts.h"
#include "format/ErrorText.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

#include <cerrno>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(LoadingTrouble)
};

// From the end of the copy's name, where it is in universal time.
QString timeOfCopy(const std::string& copy) {
    const QString form = QStringLiteral("yyyy-MM-ddTHH-mm-ss'Z'");
    constexpr qsizetype length = 20;
    QDateTime time = QDateTime::fromString(QString::fromStdString(copy).right(length), form);
    time.setTimeSpec(Qt::UTC);
    return QLocale().toString(time.toLocalTime(), QLocale::ShortFormat);
}

QString whatFailed(StoredList list, bool isOfNewerVersion) {
    if (list == StoredList::Items)
        return isOfNewerVersion ? Texts::tr("The list of items can only be read.")
                                : Texts::tr("The list of items could not be read.");
    return isOfNewerVersion ? Texts::tr("The list of groups can only be read.")
                            : Texts::tr("The list of groups could not be read.");
}

QString whatWasLoaded(StoredList list, const RecordsFile& file, const std::string& earlierCopy) {
    const bool isOfItems = list == StoredList::Items;
    if (!earlierCopy.empty())
        return (isOfItems
                    ? Texts::tr("The list as it was on %1 was loaded instead (%2). What was hidden or "
                                "brought back since then is found by restoring the folders that it lay in.")
                    : Texts::tr("The groups as they were on %1 were loaded instead (%2)."))
            .arg(timeOfCopy(earlierCopy), shownPath(lastPathComponent(earlierCopy)));
    if (file.isOfNewerVersion())
        return Texts::tr("It can be looked at, but not changed.");
    return isOfItems
               ? Texts::tr("No earlier copy of it could be read. Hidden items are found again by restoring "
                           "the folders that they lie in.")
               : Texts::tr("No earlier copy of it could be read. The groups that Veilkeep begins with were "
                           "made anew; no item is lost.");
}

QString whatBecomesOfTheFile(StoredList list, const RecordsFile& file, const Error& trouble) {
    const bool isSystems = trouble.code == ErrorCode::System;
    if (!itemExistsAt(file.path()) || (isSystems && trouble.systemError == ENOENT))
        return {};
    if (trouble.code == ErrorCode::NotAFile || (isSystems && trouble.systemError == ELOOP))
        return list == StoredList::Items
                   ? Texts::tr("The list cannot be saved, and nothing can be hidden, as long as it is there.")
                   : Texts::tr("The list cannot be saved as long as it is there.");
    if (file.isOfNewerVersion())
        return Texts::tr("The file stays as it is: nothing is saved to it.");
    return Texts::tr(
               "When the list is saved next, the file is kept beside it under a name that begins with %1.")
        .arg(shownPath(lastPathComponent(file.path())) + QStringLiteral(".damaged-"));
}

} // namespace

void tellLoadingTrouble(Alerts& alerts, StoredList list, const RecordsFile& file, const Error& trouble,
                        const std::string& earlierCopy) {
    const QString found = Texts::tr("%1: %2").arg(shownPath(file.path()), errorReason(trouble));
    QStringList message{found, whatWasLoaded(list, file, earlierCopy),
                        whatBecomesOfTheFile(list, file, trouble)};
    message.removeAll(QString());
    alerts.ADRunInformationalAlertSheet(Alert::Window::None, whatFailed(list, file.isOfNewerVersion()),
                                        message.join(QStringLiteral("\n\n")), Texts::tr("OK"));
}

} // namespace veilkeep
