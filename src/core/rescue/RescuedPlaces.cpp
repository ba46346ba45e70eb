#include "core/rescue/RescuedPlaces.h"

#include "core/base/PathText.h"
#include "core/names/HiddenName.h"

#include <algorithm>
#include <utility>

namespace veilkeep {

std::vector<std::string> RescuedPlaces::cameBack(const std::string& hiddenPath, const std::string& place) {
    std::vector<std::string> settled;
    const std::string below = joinPath(hiddenPath, {});
    std::vector<std::string> moved;
    for (auto inside = m_unsettled.lower_bound(below);
         inside != m_unsettled.end() && inside->starts_with(below); inside = m_unsettled.erase(inside))
        moved.push_back(joinPath(place, std::string_view(*inside).substr(below.size())));
    for (std::string& inside : moved)
        take(std::move(inside), settled);
    take(place, settled);
    return settled;
}

void RescuedPlaces::take(std::string place, std::vector<std::string>& settled) {
    const auto components = pathComponents(place);
    if (std::ranges::find(components, hiddenDirectoryName) == components.end())
        settled.push_back(std::move(place));
    else
        m_unsettled.insert(std::move(place));
}

} // namespace veilkeep
