#include "core/rescue/RescueSearch.h"

#include "core/base/PathText.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/names/HiddenName.h"

#include <algorithm>
#include <cerrno>

namespace veilkeep {
namespace {

bool isHiddenDirectoryName(std::string_view path) {
    return lastPathComponent(path) == hiddenDirectoryName;
}

} // namespace

std::string RescueRoot::base() const {
    return std::string(withoutHiddenDirectories(isHiddenItem ? parentPath(path) : std::string_view(path)));
}

std::string RescueRoot::itemAround() const {
    const std::string from = base();
    for (std::string_view above = from; above.size() > 1; above = parentPath(above))
        if (isHiddenDirectoryName(parentPath(above)))
            return std::string(above);
    return {};
}

Result<RescueRoot> RescueRoot::of(const std::string& absolutePath) {
    RescueRoot root;
    const auto itself = withResolvedParent(absolutePath);
    if (!itself || !itemExistsAt(*itself))
        return Error::system("lstat", absolutePath, errno);
    root.isHiddenItem = isHiddenDirectoryName(parentPath(*itself)) && !isHiddenDirectoryName(*itself);
    const auto followed = root.isHiddenItem ? itself : realPath(*itself);
    if (!followed)
        return Error::system("realpath", absolutePath, errno);
    root.path = *followed;
    root.isDirectory = isDirectoryAt(root.path);
    if (!root.isHiddenItem && !root.isDirectory)
        return Error{ErrorCode::NotAFile, "open", absolutePath, 0};
    return root;
}

Result<void> RescueSearch::lookInto(const RescueRoot& root) {
    if (root.isHiddenItem)
        m_found.add(root.path);
    if (!root.isDirectory)
        return {};
    auto scanned = m_scan.scan(root.path, [this](const std::string& path) { m_found.add(path); });
    if (!scanned)
        return std::move(scanned).error();
    m_unreadable += scanned->unreadable;
    std::ranges::move(scanned->troubles, std::back_inserter(m_troubles));
    return {};
}

} // namespace veilkeep
