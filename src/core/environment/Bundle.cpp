#include "core/environment/Bundle.h"

#include "core/base/PathText.h"

#include <unistd.h>

#include <climits>
#include <string_view>

namespace veilkeep {

std::string applicationBundlePath() {
    char buffer[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", buffer, sizeof buffer);
    if (length <= 0 || static_cast<std::size_t>(length) == sizeof buffer)
        return {};
    const std::string_view programs = parentPath(std::string_view(buffer, static_cast<std::size_t>(length)));
    constexpr std::string_view place = "/Contents/MacOS";
    if (!programs.ends_with(place))
        return {};
    return std::string(programs.substr(0, programs.size() - place.size()));
}

std::string bundledProgramPath(const std::string& bundle, const std::string& program) {
    return bundle + "/Contents/MacOS/" + program;
}

} // namespace veilkeep
