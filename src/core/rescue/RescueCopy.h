#pragma once

#include "core/base/Result.h"
#include "core/base/UniqueFd.h"
#include "core/filesystem/Place.h"
#include "core/filesystem/WalkBoundaries.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace veilkeep {

// Whoever is told how the copying goes.
struct RescueCopyReport {
    std::function<void(const Error&)> failed; // of something in a hidden folder, which goes on without it
    std::function<void(const std::string& path)> progress;
    std::function<bool()> isCancelled;
};

// Copies hidden items with all that is in them to another place, where all gets its visible name. Follows no
// link, changes nothing where they lie, and replaces nothing. An item is copied under a name of its own that
// begins with ".veilkeep-copy-", and gets its real one in the end. What a search does not enter is not copied
// either: the error is EXDEV.
class RescueCopy {
public:
    // The target is an open directory, whose path stands in what is told.
    RescueCopy(UniqueFd target, std::string targetPath, WalkBoundaries::Kind boundaries,
               RescueCopyReport report);

    struct Copied {
        std::string path;
        bool isWhole = true; // else what is missing was told
    };

    // `place` is relative to the target. After an error nothing is left there; its path is one of the item's
    // or, where that is in the way, of the target.
    Result<Copied> copy(const std::string& hiddenPath, std::string_view place);

    // Makes all of it survive a power cut.
    Result<void> sync() const;

    bool hasLostAttributes() const { return m_hasLostAttributes; } // the target cannot keep all of them

private:
    // Of a regular file with several names in the item, where the first one of them was put.
    using Links = std::map<std::pair<dev_t, ino_t>, std::string>;

    Result<UniqueFd> openTargetFolder(std::string_view sourceFolder, std::string_view path);
    Result<UniqueFd> makeTargetFolder(std::string_view sourceFolder, const Place& place);

    // The paths only name the source in what is told.
    Result<void> copyAny(const Place& from, const std::string& path, const Place& to);
    Result<void> copyFile(const Place& from, const std::string& path, const struct stat& status,
                          const Place& to);
    Result<void> copyDirectory(const Place& from, const std::string& path, const Place& to);
    Result<void> copyEntries(int from, const std::string& path, int to);
    Result<void> copyHiddenEntries(int from, const std::string& path, int to);
    Result<void> copyEntry(const Place& from, const std::string& path, const Place& to);
    Result<void> copySpecial(const Place& from, const std::string& path, const struct stat& status,
                             const Place& to);
    bool isBoundary(std::string_view path) const;
    bool isLinked(const struct stat& status, const Place& to);
    bool mustEnd(const Error& error) const;

    UniqueFd m_target;
    std::string m_targetPath;
    const WalkBoundaries::Kind m_boundaryKind;
    RescueCopyReport m_report;
    std::optional<WalkBoundaries> m_boundaries; // below the folder that the item in hand lies in
    std::size_t m_boundaryRootSize = 0;         // its path's
    Links m_links;
    int m_item = -1;      // the copy of the item in hand, where that is a directory
    std::string m_inItem; // where in it, ended by "/" unless empty
    unsigned int m_depth = 0;
    bool m_isWhole = true; // the item in hand
    bool m_hasLostAttributes = false;
};

} // namespace veilkeep
