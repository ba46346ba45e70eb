#include "requests/ListRequests.h"

#include "core/records/FileSystemHelpers.h"
#include "filelist/FileMatcher.h"
#include "format/ErrorText.h"
#include "requests/RequestRules.h"

#include <QCoreApplication>

#include <optional>
#include <utility>
#include <vector>

namespace veilkeep {
namespace {

constexpr std::size_t rowsAtATime = 1000;

// Nothing where the request names a state that there is not.
std::optional<FilePredicate> predicateOf(const Request& request) {
    FilePredicate predicate;
    predicate.nameSearch = request.options.value(QLatin1String(requestOption::name)).toString();
    const QString state = request.options.value(QLatin1String(requestOption::state)).toString();
    for (const std::int32_t each : {File::Broken, File::Visible, File::Hidden})
        if (state == stateName(each))
            predicate.state = each;
    if (!state.isEmpty() && !predicate.state)
        return std::nullopt;
    return predicate;
}

} // namespace

QString stateName(std::int32_t state) {
    if (state == File::Hidden)
        return QStringLiteral("hidden");
    return state == File::Visible ? QStringLiteral("visible") : QStringLiteral("broken");
}

QVariantMap listRow(const File& file) {
    QVariantMap row{
        {QStringLiteral("path"), rowBytes(file.path())},
        {QStringLiteral("originalPath"), rowBytes(file.originalPath())},
        {QStringLiteral("name"), rowBytes(file.name())},
        {QStringLiteral("state"), stateName(file.state())},
        {QStringLiteral("group"), qlonglong{file.groupID()}},
        {QStringLiteral("kind"), file.isFile() ? QStringLiteral("file") : QStringLiteral("folder")},
    };
    if (file.size() != unknownFileSize)
        row.insert(QStringLiteral("size"), qulonglong{file.size()});
    return row;
}

void tellList(RequestWork& work) {
    auto predicate = predicateOf(work.request);
    if (!predicate) {
        work.caller.message(
            QCoreApplication::translate("ListRequests", "There is no such state of an item."));
        work.status = RequestStatus::WrongUsage;
        return;
    }
    if (work.option(requestOption::group).isValid()) {
        const ListedGroup group = work.groupNamedBy(requestOption::group);
        if (!group)
            return;
        if (group->groupID() != GroupViewController::allFilesGroup())
            predicate->groupID = group->groupID();
    }
    const FileMatcher matcher(*predicate);
    std::vector<QVariantMap> rows;
    for (const ListedFile& file : work.controller.files().all()) {
        if (!matcher.matches(*file))
            continue;
        rows.push_back(listRow(*file));
        if (rows.size() == rowsAtATime)
            work.caller.listed(std::exchange(rows, {}));
    }
    if (!rows.empty())
        work.caller.listed(rows);
}

void tellStatus(RequestWork& work) {
    qulonglong hidden = 0;
    qulonglong visible = 0;
    const auto& files = work.controller.files().all();
    for (const ListedFile& file : files) {
        hidden += file->state() == File::Hidden;
        visible += file->state() == File::Visible;
    }
    const qulonglong all = files.size();
    QVariantMap row{
        {QStringLiteral("items"), all},
        {QStringLiteral("hidden"), hidden},
        {QStringLiteral("visible"), visible},
        {QStringLiteral("broken"), all - hidden - visible},
    };
    if (const auto& trouble = work.controller.saveTrouble())
        row.insert(QStringLiteral("saveTrouble"), errorReason(*trouble));
    work.caller.listed({row});
}

} // namespace veilkeep
