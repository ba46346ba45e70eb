#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace veilkeep {

// One installed program that makes small images of files, as a ".thumbnailer" file describes it.
struct Thumbnailer {
    std::vector<std::string> command; // its program's path first; with %u, %i, %o, %s, %% in the arguments
    std::vector<std::string> mimeTypes;
};

// Nothing where the text describes none, or its program is not installed.
std::optional<Thumbnailer> thumbnailerFrom(std::string_view text);

// The arguments of one run.
std::vector<std::string> thumbnailerArguments(const Thumbnailer& thumbnailer, const std::string& path,
                                              const std::string& output, int size);

// Those of $XDG_DATA_HOME and $XDG_DATA_DIRS, the user's own first; read with the first question. Any thread.
class Thumbnailers {
public:
    Thumbnailers(); // takes the directories from the environment

    const Thumbnailer* forMimeType(const std::string& mimeType) const; // null: there is none

private:
    void read() const;

    std::vector<std::string> m_directories;
    mutable std::once_flag m_isRead;
    mutable std::unordered_map<std::string, Thumbnailer> m_byMimeType;
};

} // namespace veilkeep
