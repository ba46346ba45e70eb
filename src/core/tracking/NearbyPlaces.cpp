#include "core/tracking/NearbyPlaces.h"

#include "core/base/PathText.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/names/BaseCloakLogic.h"

#include <utility>

namespace veilkeep {
namespace {

constexpr std::size_t mostDirectories = 256;

std::vector<std::string> formsIn(const std::vector<std::string>& directories, std::string_view name) {
    const bool canBeHidden = refusalToHide(name) == NameRefusal::None;
    const std::string hidden = joinPath(hiddenDirectoryName, scrambledName(name));
    std::vector<std::string> forms;
    for (const std::string& directory : directories) {
        forms.push_back(joinPath(directory, name));
        if (canBeHidden)
            forms.push_back(joinPath(directory, hidden));
    }
    return forms;
}

std::vector<std::string> existing(std::vector<std::string> paths) {
    std::erase_if(paths, [](const std::string& path) { return !itemExistsAt(path); });
    paths.resize(std::min(paths.size(), mostDirectories));
    return paths;
}

} // namespace

NearbyPlaces placesNear(const std::string& path, std::string_view base) {
    const std::string visible =
        BaseCloakLogic::constructOriginalFullFileName(std::string_view(path).substr(base.size()));
    std::vector<std::string_view> components = pathComponents(visible);
    std::erase(components, "/");
    NearbyPlaces places;
    if (components.empty())
        return places;
    const std::string_view name = components.back();
    components.pop_back();
    places.directories = {std::string(base.empty() ? "/" : base)};
    for (const std::string_view component : components)
        places.directories = existing(formsIn(places.directories, component));
    places.paths = formsIn(places.directories, name);
    return places;
}

} // namespace veilkeep
