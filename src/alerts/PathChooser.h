#pragma once

#include <optional>
#include <string>
#include <vector>

namespace veilkeep {

// Has the user choose files and folders: an open panel. Paths are absolute. Main thread.
class PathChooser {
public:
    virtual ~PathChooser() = default;

    // One file or folder; nothing when the user cancels. startingAt may be gone.
    virtual std::optional<std::string> chooseItem(const std::string& startingAt) = 0;

    // Several folders, none when the user cancels; the button reads "Restore". An empty startingAt leaves the
    // place to the panel.
    virtual std::vector<std::string> chooseDirectoriesToRestore(const std::string& startingAt) = 0;

protected:
    PathChooser() = default;
    PathChooser(const PathChooser&) = default;
    PathChooser& operator=(const PathChooser&) = default;
};

} // namespace veilkeep
