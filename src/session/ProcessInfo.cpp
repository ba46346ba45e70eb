#include "session/ProcessInfo.h"

#include "core/base/PathText.h"
#include "core/environment/Bundle.h"
#include "core/environment/InstallationPlaces.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/storage/BundleInfo.h"
#include "format/SystemVersion.h"

namespace veilkeep {
bool ProcessInfo::appIsRunningFromAppsFolder() {
    return isInAppsFolder(applicationBundlePath());
}

bool ProcessInfo::isInAppsFolder(const std::string& bundle) {
    LinkResolver links;
    const std::string ofUser = InstallationPlaces::ofUser().programs;
    const std::string& resolved = links.resolved(cleanPath(bundle));
    return resolved.starts_with(links.resolved(InstallationPlaces::ofSystem)) ||
           (!ofUser.empty() && resolved.starts_with(links.resolved(ofUser)));
}

QString ProcessInfo::applicationName() {
    return QString::fromStdString(BundleInfo::main().executable());
}

QString ProcessInfo::applicationIdentifier() {
    return QString::fromStdString(BundleInfo::main().identifier());
}

QString ProcessInfo::applicationVersion() {
    return QString::fromStdString(BundleInfo::main().longVersion());
}

QString ProcessInfo::osVersion() {
    return veilkeep::osVersion();
}

} // namespace veilkeep
