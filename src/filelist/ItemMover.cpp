#include "filelist/ItemMover.h"

#include "core/base/PathText.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/names/HiddenName.h"
#include "core/protocol/WorkerError.h"
#include "core/tracking/AliasResolver.h"

#include <utility>

namespace veilkeep {

CloakWorkerResult ItemMover::move(WorkerOperation operation, const ListedFile& file, bool privilidged) {
    const bool hides = operation == WorkerOperation::Hide;
    const std::string from(file->path());
    const std::string resolved = resolvedPath(from);
    if (m_touched.hasBelow(resolved))
        for (Error& trouble : m_touched.sync())
            m_troubles.push_back(std::move(trouble));
    CloakWorkerResult result =
        hides ? m_worker.hideFileWithPath(from, privilidged) : m_worker.unhideFileWithPath(from, privilidged);
    if (result.errorCode() == 0 && !itemExistsAt(result.newFileName())) // rubbish, from a broken worker
        result = CloakWorkerResult::resultWithErrorCode(static_cast<int>(WorkerError::Unknown));
    if (result.errorCode() != 0)
        if (auto moved = placeNow(operation, *file))
            result = CloakWorkerResult::resultWithFileName(*std::move(moved));
    if (result.errorCode() != 0)
        return result;
    m_files.change(file, [&](File& record) { record.movedTo(result.newFileName()); });
    const std::string_view left = parentPath(resolved);
    m_touched.touch(left);
    m_touched.touch(hides ? joinPath(left, hiddenDirectoryName) : parentPath(left));
    if (!file->isFile()) {
        m_folder.clear();
        m_movedFolders.insert_or_assign(from, result.newFileName());
    }
    return result;
}

// Items of a batch mostly share their folder.
std::string ItemMover::resolvedPath(const std::string& path) {
    const std::string_view folder = parentPath(path);
    if (m_folder.empty() || m_folder != folder) {
        m_folder = folder;
        m_resolvedFolder = cleanPath(parentPath(withResolvedParent(path).value_or(path)));
    }
    return joinPath(m_resolvedFolder, lastPathComponent(path));
}

// Where the item lies when it is in the state that was asked for after all.
std::optional<std::string> ItemMover::placeNow(WorkerOperation operation, const File& file) const {
    const std::string before(file.path());
    if (itemExistsAt(before))
        return std::nullopt;
    AliasResolver resolver(AliasResolver::Reach::Nearby);
    const auto answer =
        resolver.resolve(file.alias().value_or(std::string_view()), AliasResolver::Mounting::Never);
    if (answer.outcome != AliasResolver::Answer::Outcome::Found || answer.path == before)
        return std::nullopt;
    const bool isHidden = lastPathComponent(parentPath(answer.path)) == hiddenDirectoryName;
    if (isHidden != (operation == WorkerOperation::Hide))
        return std::nullopt;
    return answer.path;
}

std::vector<Error> ItemMover::finish() {
    m_folder.clear();
    for (Error& trouble : m_touched.sync())
        m_troubles.push_back(std::move(trouble));
    takeAlong();
    return std::exchange(m_troubles, {});
}

void ItemMover::takeAlong() {
    const auto moved = std::exchange(m_movedFolders, {});
    if (moved.empty())
        return;
    const auto placeAfter = [&moved](std::string_view path) -> std::optional<std::string> {
        for (std::string_view above = parentPath(path); above.size() > 1; above = parentPath(above))
            if (const auto folder = moved.find(std::string(above)); folder != moved.end())
                return folder->second + std::string(path.substr(above.size()));
        return std::nullopt;
    };
    for (const ListedFile& file : std::vector<ListedFile>(m_files.all())) {
        auto place = placeAfter(file->path());
        // A folder in a moved folder may have been moved itself.
        for (std::size_t step = 1; place && !itemExistsAt(*place) && step < moved.size(); ++step)
            if (auto next = placeAfter(*place))
                place = std::move(next);
        if (place && !itemExistsAt(std::string(file->path())) && itemExistsAt(*place))
            m_files.change(file, [&](File& record) { record.movedTo(*place); });
    }
}

} // namespace veilkeep
