#include "core/tracking/NearbySearch.h"

#include "core/base/PathText.h"
#include "core/tracking/FileAlias.h"
#include "core/tracking/ItemMatch.h"
#include "core/tracking/KnownVolumes.h"
#include "core/tracking/NearbyPlaces.h"

#include <algorithm>
#include <utility>

namespace veilkeep {
namespace {

// A path that leads, or led, to the item, and how much of it is no matter of hiding.
struct Place {
    std::string path;
    std::string base;
};

Place placeOn(const Mount& mount, const AliasRecord& record) {
    const std::string_view below = std::string_view(record.volumePath).substr(mount.root.size());
    const std::string path = mount.mountPoint + (below.empty() ? "" : "/") + std::string(below);
    return {cleanPath(path), mount.mountPoint};
}

// The record's spelling first.
std::vector<Place> placesOf(const AliasRecord& record) {
    std::vector<Place> places = {{record.lastPath, {}}};
    if (!record.volume.isKnown())
        return places;
    const auto mounts = KnownVolumes::shared().mountsOf(record.volume);
    for (const Mount& mount : *mounts) {
        if (!isSameOrBelow(record.volumePath, mount.root))
            continue;
        Place place = placeOn(mount, record);
        if (place.path != record.lastPath)
            places.push_back(std::move(place));
    }
    return places;
}

bool isThere(const AliasRecord& record, const std::string& path, Closeness closeness) {
    const auto found = describeItemAt(path);
    return found && isTheItem(record, *found, closeness);
}

std::optional<std::string> atItsPlace(const AliasRecord& record, const std::vector<Place>& places,
                                      Closeness closeness) {
    for (const Place& place : places)
        if (isThere(record, place.path, closeness))
            return place.path;
    return std::nullopt;
}

std::optional<std::string> inOtherForm(const AliasRecord& record, const std::vector<Place>& places,
                                       std::vector<std::string>& directories) {
    for (const Place& place : places) {
        NearbyPlaces near = placesNear(place.path, place.base);
        for (const std::string& path : near.paths)
            if (path != place.path && isThere(record, path, Closeness::OtherForm))
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
    const std::vector<Place> places = placesOf(record);
    // Where marks prove nothing, what is as like in its other form comes before what is merely at its place.
    finding.path = atItsPlace(record, places, Closeness::OtherForm);
    if (!finding.path)
        finding.path = inOtherForm(record, places, finding.directories);
    if (!finding.path)
        finding.path = atItsPlace(record, places, Closeness::RecordedPath);
    return finding;
}

} // namespace veilkeep
