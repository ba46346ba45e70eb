#pragma once

#include "core/environment/InstallationPlaces.h"
#include "platform/Installation.h"
#include "platform/linux/installation/Manifest.h"

#include <string>

namespace veilkeep {

// Takes one installation away, by its manifest. Can be done again where it was cut off.
class UninstallRun {
public:
    explicit UninstallRun(const InstallationPlaces& places) : m_places(places) {}

    Result<Uninstalled> run();

private:
    void removeAutostart();
    void removeUnitLinks();
    void removeItems();
    void removeDirectories();
    void noteRest(const std::string& path);
    void remove(const std::string& path);
    void keep(const std::string& path);
    void noteFailure(Error error);

    const InstallationPlaces& m_places;
    Manifest m_manifest;
    Uninstalled m_result;
};

} // namespace veilkeep
