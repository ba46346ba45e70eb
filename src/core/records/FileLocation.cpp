#include "core/records/File.h"

#include "core/base/PathText.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/MoveLeftover.h"
#include "core/log/Log.h"
#include "core/names/BaseCloakLogic.h"
#include "core/tracking/FileAlias.h"
#include "core/tracking/HalfDoneMove.h"
#include "core/tracking/ItemMatch.h"

#include <algorithm>
#include <span>
#include <vector>

namespace veilkeep {
namespace {

// Whether a new alias would find the item where the old one does not. Size and times change with the content
// and count only where nothing better tells the item.
bool isOutdated(const AliasRecord& known, const AliasRecord& found) {
    return known.lastPath != found.lastPath || known.volumePath != found.volumePath ||
           !(known.volume == found.volume) || (!isProvenToBe(known, found) && !(known.item == found.item));
}

} // namespace

std::optional<std::string> File::newPathWithMount(AliasResolver& resolver, bool mount) const {
    using Mounting = AliasResolver::Mounting;
    const auto record = alias();
    if (!record)
        return std::nullopt;
    const Mounting unasked = isWhereVolumesComeAndGo() ? Mounting::Never : Mounting::Silently;
    return pathFromAliasRecordWithMount(*record, mount ? Mounting::WithQuestions : unasked, resolver);
}

std::optional<std::string> File::newPath(AliasResolver& resolver) const {
    return newPathWithMount(resolver, false);
}

bool File::checkPathesConsistencyWithMount(AliasResolver& resolver, bool mount) {
    if (itemExistsAt(std::string(path())))
        return true;
    const auto found = newPathWithMount(resolver, mount);
    if (!found || !itemExistsAt(*found))
        return false;
    syncPathWithNewPath(found);
    return true;
}

bool File::checkPathesConsistency(AliasResolver& resolver) {
    return checkPathesConsistencyWithMount(resolver, false);
}

void File::syncPathWithAlias(AliasResolver& resolver) {
    syncPathWithNewPath(newPath(resolver));
}

void File::syncPathWithNewPath(const std::optional<std::string>& newPath) {
    std::string place = newPath.value_or(std::string(path()));
    if (place != path()) {
        if (const std::string present(path()); itemExistsAt(present))
            place = present;
        else
            setPath(place);
    }
    // A record that is broken already goes on: its names follow the path that it has.
    if (state() != Broken && !itemExistsAt(place))
        return setState(Broken);
    const bool isHidden = place.find(hiddenDirectoryName) != std::string::npos;
    if (const State now = isHidden ? Hidden : Visible; state() != now)
        setState(now);
    setOriginalPath(isHidden ? BaseCloakLogic::constructOriginalFullFileName(place) : place);
    setName(lastPathComponent(originalPath()));
}

std::int32_t File::stateFromPath() const {
    return lastPathComponent(parentPath(path())) == hiddenDirectoryName ? Hidden : Visible;
}

std::int32_t File::stateFromPlace() const {
    const auto components = pathComponents(path());
    return std::ranges::find(components, hiddenDirectoryName) != components.end() ? Hidden : Visible;
}

// By the system, by udisks and by hand.
bool File::isWhereVolumesComeAndGo() const {
    constexpr std::string_view places[] = {"/Volumes", "/media/", "/run/media/", "/mnt"};
    return std::ranges::any_of(places, [&](std::string_view place) { return path().starts_with(place); });
}

std::optional<std::string> File::closestHiddenDir() const {
    const std::vector<std::string_view> components = pathComponents(path());
    const auto last = std::ranges::find(components.rbegin(), components.rend(), hiddenDirectoryName);
    if (last == components.rend())
        return std::nullopt;
    const auto following = static_cast<std::size_t>(last - components.rbegin()); // components after it
    if (following < 2) {
        logLine("Failed to determine parent directory for " + std::string(path()) + ". Just return nil.");
        return std::nullopt;
    }
    std::string directory;
    for (const std::string_view component : std::span(components).first(components.size() - following + 1))
        directory = joinPath(directory, component);
    return directory;
}

File::IdentityCheck File::checkIdentity(const IsAnothers& isAnothers) {
    const IdentityCheck outcome = compareWithAlias(isAnothers);
    if (outcome != IdentityCheck::NothingThere)
        if (const auto healed = healHalfDoneMove(std::string(path())); !healed)
            logError("A move that was cut off could not be put right", healed.error());
    return outcome;
}

bool File::isCertainlyAtItsPlace() const {
    const std::string present(path());
    const auto found = describeItemAt(present);
    const auto known = decodeAliasRecord(alias().value_or(std::string_view()));
    if (!found || !known || !isProvenToBe(*known, *found) || isOutdated(*known, *found) ||
        !isTheItem(*known, *found, Closeness::RecordedPath))
        return false;
    return healHalfDoneMove(present).has_value();
}

File::IdentityCheck File::compareWithAlias(const IsAnothers& isAnothers) {
    const std::string present(path());
    const auto found = describeItemAt(present);
    if (!found)
        return IdentityCheck::NothingThere;
    const auto known = decodeAliasRecord(alias().value_or(std::string_view()));
    const bool isProven = known && isProvenToBe(*known, *found);
    const bool isPlaceholder = !isProven && isPlaceholderAt(present);
    if (known && !isPlaceholder && isTheItem(*known, *found, Closeness::RecordedPath)) {
        if (isOutdated(*known, *found))
            updateAlias();
        return IdentityCheck::Confirmed;
    }
    AliasResolver resolver(AliasResolver::Reach::Nearby);
    const auto answer =
        resolver.resolve(alias().value_or(std::string_view()), AliasResolver::Mounting::Never);
    if (answer.outcome == AliasResolver::Answer::Outcome::Found && answer.path != present) {
        movedTo(answer.path);
        return IdentityCheck::FollowedElsewhere;
    }
    if (isPlaceholder)
        return IdentityCheck::NothingThere;
    if (known && isAnothers && isAnothers(*found))
        return IdentityCheck::AnothersItemThere;
    updateAlias();
    return IdentityCheck::Renewed;
}

void File::movedTo(std::string_view path) {
    setPath(path);
    updateAlias();
    syncPathWithNewPath(std::nullopt); // the alias leads nowhere else
    if (state() == Hidden && stateFromPlace() == Visible)
        setState(Visible); // ".SYS_INDEX" is but a part of some name
}

} // namespace veilkeep
