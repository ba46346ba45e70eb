#pragma once

#include "core/filesystem/DirectoryWalker.h"
#include "core/tracking/AliasRecord.h"
#include "core/tracking/VolumeMounter.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// Finds the items of alias records where they are now: at their recorded place, in the other form of it or of
// any directory above, in the directory that they were in, and by a walk of their volume, in this order. Only
// what is confirmed to be the item counts. Blocks; used on one thread, but for cancel() and
// directoriesSeen().
class AliasResolver {
public:
    enum class Reach { Nearby, WholeVolume }; // WholeVolume: with a walk for what was not found nearby

    // Whether a volume that is not mounted may be mounted, and whether somebody may be asked on the way.
    enum class Mounting { Never, Silently, WithQuestions };

    struct Answer {
        enum class Outcome {
            Found,
            Missing,      // looked for as far as the reach goes
            VolumeAbsent, // nothing is known of the item but that its volume is not mounted
            Unusable,     // the bytes are no record
            Cancelled,
        };
        Outcome outcome = Outcome::Unusable;
        std::string path; // where the item is, or last was; empty for an unusable record

        bool operator==(const Answer&) const = default;
    };

    // Without a mounter, which is not owned, nothing is mounted.
    explicit AliasResolver(Reach reach, VolumeMounter* mounter = nullptr)
        : m_reach(reach), m_mounter(mounter) {}

    Answer resolve(std::string_view record, Mounting mounting);

    // Told of each item that is found, by the number of its record and at once, in the midst of a walk
    // where its place is certain by then. On any thread, never twice at the same time; must not throw.
    using Found = std::function<void(std::size_t number, const std::string& path)>;

    // In their order. All of them cost one walk of each volume.
    std::vector<Answer> resolve(std::span<const std::string_view> records, Mounting mounting,
                                const Found& tell = {});

    // From any thread or a signal handler, at any time; ends this call and all later ones.
    void cancel() { m_walker.cancel(); }

    // On all walks so far; from any thread.
    std::uint64_t directoriesSeen() const { return m_walker.directoriesSeen(); }

private:
    struct Wanted;

    void mountAbsentVolumes(std::span<Wanted> wanted, Mounting mounting);
    void lookIntoDirectories(std::span<Wanted> wanted);
    std::map<std::size_t, std::string> lookInto(const std::string& directory,
                                                std::span<const std::size_t> numbers,
                                                std::span<const Wanted> wanted) const;
    void walkVolumes(std::span<Wanted> wanted, const Found& tell);

    Reach m_reach;
    VolumeMounter* m_mounter;
    DirectoryWalker m_walker{DirectoryWalker::Options{.stayOnVolume = true, .threads = 0}};
};

// The present path of the record's item; the last known one when it is gone or its volume absent; the empty
// text for the root directory; nothing for an unusable record.
std::optional<std::string> pathFromAliasRecordWithMount(std::string_view record,
                                                        AliasResolver::Mounting mounting,
                                                        AliasResolver& resolver);
std::optional<std::string> pathFromAliasRecord(std::string_view record, AliasResolver& resolver);

} // namespace veilkeep
