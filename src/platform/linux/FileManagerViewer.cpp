#include "platform/linux/FileManagerViewer.h"

#include "core/base/FileUri.h"
#include "core/base/PathText.h"
#include "core/log/Log.h"

#include <QDBusPendingCallWatcher>

#include <sys/stat.h>

#include <cerrno>
#include <utility>

namespace veilkeep {
namespace {

QDBusMessage showItems(const std::string& path, const QString& token) {
    const QString name = QStringLiteral("org.freedesktop.FileManager1");
    QDBusMessage call = QDBusMessage::createMethodCall(name, QStringLiteral("/org/freedesktop/FileManager1"),
                                                       name, QStringLiteral("ShowItems"));
    call << QStringList{QString::fromStdString(fileUri(path, UriSpelling::GLib))} << token;
    return call;
}

} // namespace

FileManagerViewer::FileManagerViewer(BusLink& sessionBus, Applications& applications, Trouble trouble,
                                     NewToken newToken)
    : m_bus(sessionBus),
      m_applications(applications),
      m_trouble(std::move(trouble)),
      m_newToken(std::move(newToken)) {}

void FileManagerViewer::selectFile(const std::string& path) {
    struct stat status = {};
    const std::string folder(parentPath(path));
    if (::stat(folder.c_str(), &status) != 0)
        return tell(Error::system("stat", folder, errno));
    if (!m_bus.isUp())
        return openFolderOf(path);
    const QDBusMessage call = showItems(path, m_newToken ? m_newToken() : QString());
    auto* const answer = new QDBusPendingCallWatcher(m_bus.connection().asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, path] {
        answer->deleteLater();
        if (answer->isError())
            openFolderOf(path);
    });
}

void FileManagerViewer::openFolderOf(const std::string& path) {
    const std::string folder(parentPath(path));
    if (const auto opened = m_applications.open(folder); !opened)
        tell(opened.error());
}

void FileManagerViewer::tell(const Error& error) const {
    logError("The folder of an item cannot be shown", error);
    if (m_trouble)
        m_trouble(error);
}

} // namespace veilkeep
