#include "platform/linux/installation/UserInstallation.h"

#include "core/base/PathText.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/log/Log.h"
#include "platform/linux/SessionBusConnection.h"
#include "platform/linux/installation/DesktopDatabase.h"
#include "platform/linux/installation/InstallRun.h"
#include "platform/linux/installation/UninstallRun.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

namespace veilkeep {
namespace {

// A bus looks for services of its own accord only where their directory was there when it started.
void tellBus() {
    SessionBusConnection bus;
    if (!bus.isConnected())
        return;
    const QString name = QStringLiteral("org.freedesktop.DBus");
    const QDBusMessage answer = bus.connection().call(QDBusMessage::createMethodCall(
        name, QStringLiteral("/org/freedesktop/DBus"), name, QStringLiteral("ReloadConfig")));
    if (answer.type() == QDBusMessage::ErrorMessage)
        logLine("The session bus does not look for services anew: " + answer.errorMessage().toStdString());
}

// Desktops keep a list of the icons as long as their directory's time is that of the list.
void tellIcons(const InstallationPlaces& places) {
    (void)::utimensat(AT_FDCWD, joinPath(places.dataHome, "icons/hicolor").c_str(), nullptr, 0);
}

} // namespace

UserInstallation::UserInstallation(std::string source, InstallationPlaces places)
    : m_source(std::move(source)), m_places(std::move(places)) {}

bool UserInstallation::isInstalled() const {
    return itemExistsAt(m_places.bundle);
}

Result<void> UserInstallation::install() {
    LinkResolver links;
    if (m_source.empty() || m_places.bundle.empty() || m_places.dataHome.empty() ||
        isSameOrBelow(links.resolved(m_source), links.resolved(m_places.programs)))
        return Error{ErrorCode::InvalidArgument, "install", m_source, 0};
    auto installed = InstallRun(m_source, m_places).run();
    if (!installed)
        return installed;
    tellBus();
    tellIcons(m_places);
    updateDesktopDatabase(m_places);
    return {};
}

Result<Uninstalled> UserInstallation::uninstall() {
    if (m_places.manifest.empty() || !itemExistsAt(m_places.manifest))
        return Error::system("uninstall", m_places.manifest, ENOENT);
    auto uninstalled = UninstallRun(m_places).run();
    if (!uninstalled)
        return uninstalled;
    tellBus();
    tellIcons(m_places);
    return uninstalled;
}

} // namespace veilkeep
