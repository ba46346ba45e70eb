#include "core/tracking/AliasResolver.h"

#include "core/base/PathText.h"
#include "core/log/Log.h"
#include "core/process/Parallel.h"
#include "core/tracking/FileAlias.h"
#include "core/tracking/ItemSearch.h"
#include "core/tracking/KnownVolumes.h"
#include "core/tracking/NearbySearch.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <map>
#include <set>
#include <utility>

namespace veilkeep {

using Outcome = AliasResolver::Answer::Outcome;

// One record on its way to an answer.
struct AliasResolver::Wanted {
    Wanted(AliasRecord itsRecord, Answer& itsAnswer, std::size_t itsNumber)
        : record(std::move(itsRecord)), answer(&itsAnswer), number(itsNumber) {
        const std::string& last = record.lastPath;
        *answer = {Outcome::Missing, last.substr(last.starts_with("//") ? 1 : 0)};
    }

    bool isFound() const { return answer->outcome == Outcome::Found; }
    void found(std::string path) const { *answer = {Outcome::Found, std::move(path)}; }

    void lookNearby() {
        NearbyFinding near = searchNearby(record);
        directories = std::move(near.directories);
        if (near.path)
            found(std::move(*near.path));
    }

    AliasRecord record;
    Answer* answer;
    std::size_t number;                   // the caller's, of the record
    bool isTold = false;                  // that it is found
    bool isOnOneMount = false;            // of all that are walked: what is found there is certain
    std::vector<std::string> directories; // those that the item was in
};

namespace {

// Whether the part of the volume that the item was on can be seen anywhere. Without a UUID only the source
// speaks for it.
bool isMounted(const AliasRecord& record) {
    const auto mounts = KnownVolumes::shared().mountsOf(record.volume);
    return std::ranges::any_of(*mounts, [&](const Mount& mount) {
        return isSameOrBelow(record.volumePath, mount.root) &&
               (!record.volume.uuid.empty() || record.volume.source == mount.source);
    });
}

bool isAbsent(const AliasRecord& record) {
    return record.volume.isKnown() && !isMounted(record);
}

// Those that together show all that is to be seen of the volume, each part once.
std::vector<Mount> withoutPartsOfOthers(const std::vector<Mount>& mounts) {
    std::vector<Mount> kept;
    for (const Mount& mount : mounts) {
        const auto shows = [](const Mount& whole, const Mount& part) {
            return isSameDevice(whole, part) && isSameOrBelow(part.root, whole.root);
        };
        const bool isWithinKept =
            std::ranges::any_of(kept, [&](const Mount& other) { return shows(other, mount); });
        const bool isWithinLater = std::ranges::any_of(
            mounts, [&](const Mount& other) { return other.root != mount.root && shows(other, mount); });
        if (!isWithinKept && !isWithinLater)
            kept.push_back(mount);
    }
    return kept;
}

// What walks of several mounts found. An item that seems to be on two devices is on neither for certain.
class Findings {
public:
    void add(std::size_t number, std::string path, const Mount& mount) {
        const auto [known, isNew] = m_byNumber.try_emplace(number, Finding{std::move(path), mount});
        known->second.isCertain =
            known->second.isCertain && (isNew || isSameDevice(known->second.mount, mount));
    }

    template <class Take>
    void forEachCertain(Take take) const {
        for (const auto& [number, finding] : m_byNumber)
            if (finding.isCertain)
                take(number, finding.path);
    }

private:
    struct Finding {
        std::string path;
        Mount mount;
        bool isCertain = true;
    };
    std::map<std::size_t, Finding> m_byNumber;
};

} // namespace

AliasResolver::Answer AliasResolver::resolve(std::string_view record, Mounting mounting) {
    return resolve(std::span(&record, 1), mounting).front();
}

std::vector<AliasResolver::Answer> AliasResolver::resolve(std::span<const std::string_view> records,
                                                          Mounting mounting, const Found& tell) {
    std::vector<Answer> answers(records.size());
    std::vector<Wanted> wanted;
    for (std::size_t number = 0; number < records.size(); ++number)
        if (auto record = decodeAliasRecord(records[number]))
            wanted.emplace_back(std::move(*record), answers[number], number);
    const auto tellWhatIsFound = [&] {
        for (Wanted& one : wanted)
            if (tell && one.isFound() && !std::exchange(one.isTold, true))
                tell(one.number, one.answer->path);
    };
    mountAbsentVolumes(wanted, mounting);
    forEachInParallel(wanted.size(), [&](std::size_t number) {
        if (!m_walker.isCancelled())
            wanted[number].lookNearby();
    });
    lookIntoDirectories(wanted);
    tellWhatIsFound();
    if (m_reach == Reach::WholeVolume)
        walkVolumes(wanted, tell);
    tellWhatIsFound();
    for (const Wanted& one : wanted)
        if (!one.isFound() && m_walker.isCancelled())
            one.answer->outcome = Outcome::Cancelled;
        else if (!one.isFound() && isAbsent(one.record))
            one.answer->outcome = Outcome::VolumeAbsent;
    return answers;
}

void AliasResolver::mountAbsentVolumes(std::span<Wanted> wanted, Mounting mounting) {
    if (!m_mounter || mounting == Mounting::Never)
        return;
    std::set<std::string> tried;
    const Asking asking = mounting == Mounting::WithQuestions ? Asking::Allowed : Asking::Never;
    for (const Wanted& one : wanted) {
        const std::string& uuid = one.record.volume.uuid;
        if (uuid.empty() || !isAbsent(one.record) || !tried.insert(uuid).second)
            continue;
        if (const auto mounted = m_mounter->mount(uuid, asking); !mounted)
            logError("A volume could not be mounted", mounted.error());
        MountTable::reread();
    }
}

// Each directory is read once for all that were in it.
void AliasResolver::lookIntoDirectories(std::span<Wanted> wanted) {
    std::map<std::string, std::vector<std::size_t>> byDirectory;
    for (std::size_t number = 0; number < wanted.size(); ++number)
        for (const std::string& directory : wanted[number].directories)
            if (!wanted[number].isFound())
                byDirectory[directory].push_back(number);
    const std::vector<std::pair<std::string, std::vector<std::size_t>>> directories(byDirectory.begin(),
                                                                                    byDirectory.end());
    std::vector<std::map<std::size_t, std::string>> found(directories.size());
    forEachInParallel(directories.size(), [&](std::size_t index) {
        const auto& [directory, numbers] = directories[index];
        if (!m_walker.isCancelled())
            found[index] = lookInto(directory, numbers, wanted);
    });
    for (auto& paths : found)
        for (auto& [number, path] : paths)
            wanted[number].found(std::move(path));
}

// What is known by its name alone has been looked for under it already.
std::map<std::size_t, std::string> AliasResolver::lookInto(const std::string& directory,
                                                           std::span<const std::size_t> numbers,
                                                           std::span<const Wanted> wanted) const {
    const auto status = describeItemAt(directory);
    if (!status || lastingMarksOf(status->volume.fileSystemType) == LastingMarks::None)
        return {};
    ItemSearch search(directory, status->volume);
    for (const std::size_t number : numbers)
        if (mayBeSameVolume(wanted[number].record.volume, status->volume))
            search.add(number, wanted[number].record);
    search.lookIntoDirectory([this] { return m_walker.isCancelled(); });
    return search.found();
}

void AliasResolver::walkVolumes(std::span<Wanted> wanted, const Found& tell) {
    std::map<std::uint64_t, std::pair<Mount, std::vector<std::size_t>>> byMount;
    for (std::size_t number = 0; number < wanted.size(); ++number) {
        const AliasRecord& record = wanted[number].record;
        if (wanted[number].isFound() || !record.volume.isKnown() || record.item.kind == ItemKind::Missing)
            continue;
        const auto mounts = withoutPartsOfOthers(*KnownVolumes::shared().mountsToSearch(record));
        for (const Mount& mount : mounts)
            byMount.try_emplace(mount.id, mount, std::vector<std::size_t>())
                .first->second.second.push_back(number);
        wanted[number].isOnOneMount = mounts.size() == 1;
    }
    Findings findings;
    for (const auto& [id, mountAndNumbers] : byMount) {
        const auto& [mount, numbers] = mountAndNumbers;
        ItemSearch search(mount.mountPoint, wanted[numbers.front()].record.volume);
        for (const std::size_t number : numbers)
            search.add(number, wanted[number].record);
        if (tell)
            search.setCertain([&](std::size_t number, const std::string& path) {
                if (wanted[number].isOnOneMount && !std::exchange(wanted[number].isTold, true))
                    tell(wanted[number].number, path);
            });
        if (const auto walked = m_walker.walk(mount.mountPoint, search); !walked)
            logError("A volume could not be searched", walked.error());
        for (auto& [number, path] : search.found())
            findings.add(number, path, mount);
    }
    findings.forEachCertain([&](std::size_t number, const std::string& path) { wanted[number].found(path); });
}

std::optional<std::string> pathFromAliasRecordWithMount(std::string_view record,
                                                        AliasResolver::Mounting mounting,
                                                        AliasResolver& resolver) {
    if (isCutAliasRecord(record))
        logLine("Internal Error 589-5451.  Can't allocate handle for  alias");
    AliasResolver::Answer answer = resolver.resolve(record, mounting);
    if (answer.outcome == Outcome::Unusable)
        return std::nullopt;
    if (answer.outcome == Outcome::Found && answer.path.size() > PATH_MAX) {
        logLine("Internal Error 959-2697.  OSStatus " + std::to_string(ENAMETOOLONG) +
                "i from FSResolveAlias");
        return std::nullopt;
    }
    return answer.path == "/" ? std::string() : std::move(answer.path);
}

std::optional<std::string> pathFromAliasRecord(std::string_view record, AliasResolver& resolver) {
    return pathFromAliasRecordWithMount(record, AliasResolver::Mounting::WithQuestions, resolver);
}

} // namespace veilkeep
