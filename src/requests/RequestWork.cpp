#include "requests/RequestWork.h"

#include "core/base/PathText.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/names/BaseCloakLogic.h"
#include "requests/RequestRules.h"

namespace veilkeep {

bool RequestWork::isInteractive() const {
    return request.options.value(QLatin1String(requestOption::interactive)).toBool();
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
    const auto resolved = withResolvedParent(std::string(path));
    return resolved && *resolved != path ? find(*resolved) : nullptr;
}

ListedFile RequestWork::listedInAnyForm(const std::string& path) const {
    ListedFile file = listed(path);
    return file ? file : controller.findFileWithPath(hiddenFormOf(path));
}

bool isHiddenForm(std::string_view path) {
    return lastPathComponent(parentPath(path)) == hiddenDirectoryName;
}

std::string hiddenFormOf(const std::string& path) {
    if (isHiddenForm(path))
        return path;
    return BaseCloakLogic::constructHidenFullFileName(path, joinPath(parentPath(path), hiddenDirectoryName));
}

} // namespace veilkeep
