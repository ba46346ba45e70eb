#include "core/names/TraceNames.h"

#include "core/base/FileUri.h"
#include "core/base/Md5.h"
#include "core/base/PathText.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/names/BaseCloakLogic.h"

#include <algorithm>

namespace veilkeep {

std::vector<std::string> spellingsOf(const std::string& path) {
    std::vector<std::string> spellings;
    const auto add = [&](const std::string& spelling) {
        for (const std::string& form : {spelling, BaseCloakLogic::constructOriginalFullFileName(spelling)})
            if (std::ranges::find(spellings, form) == spellings.end())
                spellings.push_back(form);
    };
    add(cleanPath(path));
    if (const auto resolved = withResolvedParent(path))
        add(cleanPath(*resolved));
    return spellings;
}

std::set<std::string> thumbnailNamesOf(const std::string& path) {
    const std::set<std::string> uris = {fileUri(path, UriSpelling::GLib), fileUri(path, UriSpelling::Qt)};
    std::set<std::string> names;
    for (const std::string& uri : uris)
        names.insert(md5(uri) + ".png");
    return names;
}

} // namespace veilkeep
