#pragma once

#include <string>

namespace veilkeep {

// Where the program lies that a package of the system installed, and where a user installs it alone.
struct InstallationPlaces {
    static constexpr const char* ofSystem = "/usr/lib/veilkeep";

    std::string programs; // ~/.local/lib/veilkeep; like all below empty where there is no home
    std::string bundle;   // "Veilkeep.app" in it
    std::string manifest; // what was installed
    std::string commands; // ~/.local/bin
    std::string dataHome; // what desktops read

    static InstallationPlaces ofUser();
};

} // namespace veilkeep
