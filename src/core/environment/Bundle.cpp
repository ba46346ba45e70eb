#include "core/environment/Bundle.h"

#include "core/base/PathText.h"
#include "core/filesystem/ResolvedPath.h"

#include <string_view>

namespace veilkeep {

namespace {

std::string foundBundle() {
    const std::string program = readLink("/proc/self/exe").value_or(std::string());
    const std::string_view programs = parentPath(program);
    constexpr std::string_view place = "/Contents/MacOS";
    if (!programs.ends_with(place))
        return {};
    return std::string(programs.substr(0, programs.size() - place.size()));
}

} // namespace

std::string applicationBundlePath() {
    static const std::string path = foundBundle();
    return path;
}

std::string bundledProgramPath(const std::string& bundle, const std::string& program) {
    return bundle + "/Contents/MacOS/" + program;
}

} // namespace veilkeep
