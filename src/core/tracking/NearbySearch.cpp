#include "core/tracking/NearbySearch.h"

#include "core/base/PathText.h"
#include "core/filesystem/MoveLeftover.h"
#include "core/tracking/FileAlias.h"
#include "core/tracking/ItemMatch.h"
#include "core/tracking/KnownVolumes.h"
#include "core/tracking/NearbyPlaces.h"

#include <algorithm>
#include <utility>

namespace veilkeep {
namespace {

// A path that leads, or led, to the item, and how much of it is no matter of hiding.
struct Route {
    std::string path;
    std::string base;
};

Route routeOn(const Mount& mount, const AliasRecord& record) {
    const std::string_view below = std::string_view(record.volumePath).substr(mount.root.size());
    const std::string path = mount.mountPoint + (below.empty() ? "" : "/") + std::string(below);
    return {cleanPath(path), mount.mountPoint};
}

// The record's spelling first.
std::vector<Route> routesTo(const AliasRecord& record) {
    std::vector<Route> routes = {{record.lastPath, {}}};
    if (!record.volume.isKnown())
        return routes;
    const auto mounts = KnownVolumes::shared().mountsToSearch(record);
    for (const Mount& mount : *mounts) {
        if (!isSameOrBelow(record.volumePath, mount.root))
            continue;
        Route route = routeOn(mount, record);
        if (route.path != record.lastPath)
            routes.push_back(std::move(route));
    }
    return routes;
}

bool isThere(const AliasRecord& record, const std::string& path, Closeness closeness) {
    const auto found = describeItemAt(path);
    return found && isTheItem(record, *found, closeness) &&
           (isProvenToBe(record, *found) || !isPlaceholderAt(path));
}

std::optional<std::string> atItsPlace(const AliasRecord& record, const std::vector<Route>& routes,
                                      Closeness closeness) {
    for (const Route& route : routes)
        if (isThere(record, route.path, closeness))
            return route.path;
    return std::nullopt;
}

std::optional<std::string> inOtherForm(const AliasRecord& record, const std::vector<Route>& routes,
                                       std::vector<std::string>& directories) {
    for (const Route& route : routes) {
        NearbyPlaces near = placesNear(route.path, route.base);
        for (const std::string& path : near.paths)
            if (path != route.path && isThere(record, path, Closeness::OtherForm))
                return path;
        std::ranges::move(near.directories, std::back_inserter(directories));
    }
    return std::nullopt;
}

} // namespace

NearbyFinding searchNearby(const AliasRecord& record) {
    NearbyFinding finding;
    if (!record.lastPath.starts_with('/'))
        return finding;
    const std::vector<Route> routes = routesTo(record);
    // Where marks prove nothing, what is as like in its other form comes before what is merely at its place.
    finding.path = atItsPlace(record, routes, Closeness::OtherForm);
    if (!finding.path)
        finding.path = inOtherForm(record, routes, finding.directories);
    if (!finding.path)
        finding.path = atItsPlace(record, routes, Closeness::RecordedPath);
    return finding;
}

} // namespace veilkeep
