#include "requests/RequestWork.h"

#include "core/base/PathText.h"
#include "core/names/BaseCloakLogic.h"
#include "requests/RequestRules.h"

#include <QCoreApplication>

namespace veilkeep {

bool RequestWork::isInteractive() const {
    return option(requestOption::interactive).toBool();
}

ListedGroup RequestWork::groupNamedBy(const char* option) {
    const std::string name = bytesOption(option);
    const ListedGroup group = groups.groupForName(name);
    if (group && !group->isHeaderRow())
        return group;
    fail(name, QCoreApplication::translate("RequestWork", "There is no such group."));
    return nullptr;
}

void RequestWork::refuseAsUnknown() {
    caller.message(QCoreApplication::translate("RequestWork", "This request is not understood."));
    status = RequestStatus::WrongUsage;
}

void RequestWork::fail(const std::string& path, const QString& reason) {
    caller.itemFailed(path, reason);
    status = RequestStatus::SomeFailed;
}

ListedFile RequestWork::listed(std::string_view path) const {
    const auto find = [this](std::string_view place) {
        ListedFile file = controller.findFileWithOriginalPath(place);
        return file ? file : controller.findFileWithPath(place);
    };
    if (ListedFile file = find(path))
        return file;
    const std::string resolved =
        joinPath(links.resolved(std::string(parentPath(path))), lastPathComponent(path));
    if (ListedFile file = resolved != path ? find(resolved) : nullptr)
        return file;
    return recordsByItem().atSamePlace(std::string(path));
}

const RecordsByItem& RequestWork::recordsByItem() const {
    if (!byItem)
        byItem = std::make_unique<RecordsByItem>(controller.files());
    return *byItem;
}

ListedFile RequestWork::listedInAnyForm(const std::string& path) const {
    if (ListedFile file = listed(path))
        return file;
    const std::string hidden = hiddenFormOf(path);
    const ListedFile file = controller.findFileWithPath(hidden);
    return file ? file : recordsByItem().atSamePlace(hidden);
}

bool isHiddenForm(std::string_view path) {
    return lastPathComponent(parentPath(path)) == hiddenDirectoryName;
}

std::string hiddenFormOf(const std::string& path) {
    if (isHiddenForm(path))
        return path;
    return BaseCloakLogic::constructHidenFullFileName(path, joinPath(parentPath(path), hiddenDirectoryName));
}

QByteArray rowBytes(std::string_view text) {
    return {text.data(), static_cast<qsizetype>(text.size())};
}

} // namespace veilkeep
