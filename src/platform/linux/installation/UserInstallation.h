#pragma once

#include "core/environment/Bundle.h"
#include "core/environment/InstallationPlaces.h"
#include "platform/Installation.h"

#include <string>

namespace veilkeep {

// The program in the user's home: its bundle, commands, and what makes the desktop know it. The bundle that
// is installed carries the templates of that. One process installs or removes at a time.
class UserInstallation : public Installation {
public:
    explicit UserInstallation(std::string source = applicationBundlePath(),
                              InstallationPlaces places = InstallationPlaces::ofUser());

    bool isInstalled() const override;
    Result<void> install() override;
    Result<Uninstalled> uninstall() override;

private:
    const std::string m_source;
    const InstallationPlaces m_places;
};

} // namespace veilkeep
