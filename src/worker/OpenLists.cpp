#include "worker/OpenLists.h"

#include "core/base/FileUri.h"
#include "core/base/PathText.h"
#include "core/environment/XdgDirectories.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/names/TraceNames.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace veilkeep {
namespace {

constexpr std::size_t longestListLookedThrough = std::size_t{4} << 20;

struct KnownProgram {
    std::string_view name;
    std::string_view list;    // below the user's configuration
    std::string_view process; // as the kernel names it
};

constexpr std::array knownPrograms{
    KnownProgram{"LibreOffice", "libreoffice/4/user/registrymodifications.xcu", "soffice.bin"},
    KnownProgram{"VLC", "vlc/vlc-qt-interface.conf", "vlc"},
};

std::string withoutEntities(std::string text) {
    constexpr std::pair<std::string_view, char> entities[] = {
        {"&apos;", '\''}, {"&quot;", '"'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}}; // the last one last
    for (const auto& [entity, character] : entities)
        for (std::size_t place = 0; (place = text.find(entity, place)) != std::string::npos; ++place)
            text.replace(place, entity.size(), 1, character);
    return text;
}

// As a quoted text, an element of XML and a list with commas hold it.
std::size_t lengthOfUri(std::string_view text) {
    std::size_t length = std::min(text.find_first_of("\"<> \t\r\n"), text.size());
    for (const std::string_view end : {std::string_view("']"), std::string_view("&quot;")})
        length = std::min(length, text.substr(0, length).find(end));
    return std::min(length, text.size());
}

std::optional<std::string> pathAt(std::string_view text) {
    std::string_view uri = text.substr(0, lengthOfUri(text));
    if (uri.ends_with(','))
        uri.remove_suffix(1);
    const auto path = pathOfFileUri(withoutEntities(std::string(uri)));
    return path ? std::optional(cleanPath(*path)) : std::nullopt;
}

bool names(std::string_view list, const std::vector<std::string>& spellings) {
    constexpr std::string_view scheme = "file://";
    for (std::size_t place = list.find(scheme); place != std::string_view::npos;
         place = list.find(scheme, place + scheme.size())) {
        const auto path = pathAt(list.substr(place));
        if (path && std::ranges::any_of(spellings, [&](const std::string& spelling) {
                return isSameOrBelow(*path, spelling);
            }))
            return true;
    }
    return false;
}

bool isRunning(std::string_view name) {
    for (const std::string& process : entryNamesIn("/proc")) {
        struct stat status = {};
        const std::string directory = "/proc/" + process;
        if (process.find_first_not_of("0123456789") != std::string::npos ||
            ::stat(directory.c_str(), &status) != 0 || status.st_uid != ::geteuid())
            continue;
        const auto told = readWholeFile(directory + "/comm", 64);
        if (told && *told == std::string(name) + '\n')
            return true;
    }
    return false;
}

} // namespace

std::vector<std::string> runningProgramsThatRemember(const std::string& path) {
    const std::string configuration = XdgDirectories::current().configHome;
    const std::vector<std::string> spellings = spellingsOf(path);
    std::vector<std::string> found;
    for (const KnownProgram& program : knownPrograms) {
        const auto list = readWholeFile(joinPath(configuration, program.list), longestListLookedThrough);
        if (list && names(*list, spellings) && isRunning(program.process))
            found.emplace_back(program.name);
    }
    return found;
}

} // namespace veilkeep
