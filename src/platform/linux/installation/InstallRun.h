#pragma once

#include "core/base/UniqueFd.h"
#include "core/environment/InstallationPlaces.h"
#include "platform/linux/installation/DesktopItems.h"
#include "platform/linux/installation/Manifest.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace veilkeep {

// The lock that who installs or removes holds on the directory of the programs.
Result<UniqueFd> lockInstallation(const InstallationPlaces& places);

// What a run works with, and may leave where it is killed: the new copy, and the former one.
std::string newCopy(const InstallationPlaces& places);
std::string formerCopy(const InstallationPlaces& places);

// One installation from its beginning to its end. The copied bundle gets its name last, by one rename; what
// was done before is taken back where a step fails.
class InstallRun {
public:
    InstallRun(const std::string& source, const InstallationPlaces& places)
        : m_source(source), m_places(places), m_copy(newCopy(places)) {}

    Result<void> run();

private:
    struct Former {
        std::string path;
        std::optional<DesktopItem> item; // nothing: there was none
    };

    Result<void> steps();
    Result<void> readFormer();
    Result<void> noteBeginning();
    Result<void> copyBundle();
    Result<void> planItems();
    Result<void> noteBoth();
    Result<void> makeNotedDirectories();
    Result<void> writeItems();
    Result<void> write(const DesktopItem& item);
    Result<void> putInPlace();
    void noteMissingDirectories(const std::string& path);
    void removeOutdated();
    void takeBack();

    const std::string& m_source;
    const InstallationPlaces& m_places;
    const std::string m_copy;
    UniqueFd m_lock;
    std::optional<std::string> m_formerManifest; // its bytes
    Manifest m_former, m_manifest;
    std::vector<DesktopItem> m_items; // to be written
    std::vector<Former> m_replaced;
    std::set<std::string> m_madeDirectories; // or to be made
    bool m_isNoted = false;                  // the manifest may be another one
};

} // namespace veilkeep
