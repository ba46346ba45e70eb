#include "worker/traces/TracedItems.h"

#include "core/base/PathText.h"
#include "core/names/BaseCloakLogic.h"
#include "core/names/HiddenName.h"
#include "core/names/TraceNames.h"

#include <sys/stat.h>

namespace veilkeep {
namespace {

// "S_IF…", 0 where there is nothing.
mode_t kindOf(const std::string& path) {
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & S_IFMT : mode_t{0};
}

TracedItems::Item itemAt(const std::string& path) {
    const std::string hidden =
        BaseCloakLogic::constructHidenFullFileName(path, joinPath(parentPath(path), hiddenDirectoryName));
    const std::string& place = kindOf(hidden) != 0 ? hidden : path;
    const mode_t kind = kindOf(place);
    return {spellingsOf(path), place, kind == S_IFDIR || kind == 0};
}

} // namespace

TracedItems::TracedItems(const std::vector<std::string>& visiblePaths) {
    for (const std::string& path : visiblePaths) {
        m_items.push_back(itemAt(cleanPath(path)));
        for (const std::string& spelling : m_items.back().paths) {
            m_paths.insert(spelling);
            m_names.emplace(lastPathComponent(spelling));
        }
    }
}

bool TracedItems::contains(const std::string& path) {
    const std::string clean = cleanPath(path);
    for (std::size_t end = clean.find('/', 1); end != std::string::npos; end = clean.find('/', end + 1))
        if (isOne(std::string_view(clean).substr(0, end)))
            return true;
    return isOne(clean);
}

bool TracedItems::isOne(std::string_view path) {
    if (m_paths.contains(path))
        return true;
    const std::string_view name = lastPathComponent(path);
    return m_names.contains(name) &&
           m_paths.contains(joinPath(m_links.resolved(std::string(parentPath(path))), name));
}

} // namespace veilkeep
