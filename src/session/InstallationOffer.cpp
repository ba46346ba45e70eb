#include "session/InstallationOffer.h"

#include "core/log/Log.h"
#include "core/storage/BundleInfo.h"
#include "core/storage/DefaultsKeys.h"
#include "filelist/Texts.h"
#include "session/ProcessInfo.h"

namespace veilkeep {

void InstallationOffer::handleApplicationLaunchFromDiskImage() {
    if (m_defaults.boolean(defaultsKey::noOfferToInstall).value_or(false) ||
        ProcessInfo::appIsRunningFromAppsFolder())
        return;
    const std::string named = BundleInfo::main().name();
    const QString name = named.empty() ? applicationName() : QString::fromStdString(named);
    if (!isWanted(name) || !mayOverwrite(name))
        return;
    const auto installed = m_installation.install();
    if (installed)
        return logLine(name.toStdString() + " was installed for the user");
    logError("The installation failed", installed.error());
    m_alerts.ADRunAlertSheet(Alert::Window::None, tr("Installation of %1 failed!").arg(name),
                             tr("Try to copy it to a desired location manually. The recommended location is "
                                "your Applications folder."),
                             tr("OK"));
}

bool InstallationOffer::isWanted(const QString& name) {
    return m_alerts.ADRunWarningAlert(
               tr("%1 is currently running not from Applications folder.").arg(name),
               tr("Would you like to install %1 into your Applications folder before quitting?").arg(name),
               tr("Install"), tr("Don't install"), {}, defaultsKey::noOfferToInstall) == Alerts::firstButton;
}

bool InstallationOffer::mayOverwrite(const QString& name) {
    return !m_installation.isInstalled() ||
           m_alerts.ADRunAlertSheet(
               Alert::Window::None, tr("%1 is already installed on your system!").arg(name),
               tr("Would you like to overwrite %1 in your Applications folder?").arg(name), tr("Overwrite"),
               tr("Don't overwrite")) == Alerts::defaultAnswer;
}

} // namespace veilkeep
