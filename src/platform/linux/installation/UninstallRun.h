#pragma once

#include "core/environment/InstallationPlaces.h"
#include "platform/linux/installation/Manifest.h"

#include <string>
#include <vector>

namespace veilkeep {

// Takes one installation away, by its manifest. Can be done again where it was cut off.
class UninstallRun {
public:
    explicit UninstallRun(const InstallationPlaces& places) : m_places(places) {}

    Result<std::vector<std::string>> run(); // what stays

private:
    void removeAutostart();
    void removeUnitLinks();
    void removeItems();
    void removeDirectories();
    void noteRest(const std::string& path);
    void remove(const std::string& path);
    void keep(const std::string& path);

    const InstallationPlaces& m_places;
    Manifest m_manifest;
    std::vector<std::string> m_kept;
};

} // namespace veilkeep
