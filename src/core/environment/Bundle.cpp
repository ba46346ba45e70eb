#include "core/environment/Bundle.h"

#include "core/base/PathText.h"
#include "core/filesystem/ResolvedPath.h"

#include <string_view>

namespace veilkeep {

std::string applicationBundlePath() {
    const std::string program = readLink("/proc/self/exe").value_or(std::string());
    const std::string_view programs = parentPath(program);
    constexpr std::string_view place = "/Contents/MacOS";
    if (!programs.ends_with(place))
        return {};
    return std::string(programs.substr(0, programs.size() - place.size()));
}

std::string bundledProgramPath(const std::string& bundle, const std::string& program) {
    return bundle + "/Contents/MacOS/" + program;
}

} // namespace veilkeep
