#include "core/environment/InstallationPlaces.h"

#include "core/base/PathText.h"
#include "core/environment/XdgDirectories.h"

namespace veilkeep {

InstallationPlaces InstallationPlaces::ofUser() {
    const std::string home = homeDirectory();
    if (home.empty())
        return {};
    const std::string programs = joinPath(home, ".local/lib/veilkeep");
    return {programs, joinPath(programs, "Veilkeep.app"), joinPath(programs, "installed"),
            joinPath(home, ".local/bin"), XdgDirectories::current().dataHome};
}

} // namespace veilkeep
