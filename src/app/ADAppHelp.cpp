#include "app/ADApp.h"
#include "app/ADAppParts.h"

#include "core/environment/Bundle.h"
#include "filelist/Texts.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QLocale>
#include <QUrl>
#include <QUrlQuery>

#include <pwd.h>
#include <unistd.h>

#include <csignal>

namespace veilkeep {
namespace {

// The guide in the user's language, else in English.
QString guidePath() {
    const QString folder =
        QString::fromStdString(applicationBundlePath()) + QStringLiteral("/Contents/Resources/guide/");
    for (const QString& language : QLocale().uiLanguages()) {
        const QString path = folder + QStringLiteral("index.%1.html").arg(language.section(u'-', 0, 0));
        if (QFileInfo::exists(path))
            return path;
        if (language.startsWith(QLatin1String("en")))
            break;
    }
    return folder + QStringLiteral("index.html");
}

} // namespace

void ADApp::openGuide(const QString& section, const QUrlQuery& query) {
    QUrl url = QUrl::fromLocalFile(guidePath());
    url.setQuery(query);
    url.setFragment(section);
    if (QDesktopServices::openUrl(url))
        return;
    m_parts->list.alerts().beginInformationalAlertSheet(
        tr("The guide could not be opened."),
        tr("No program was found that shows it. It lies at %1.").arg(url.toLocalFile()));
}

void ADApp::visitForum() {
    if (m_testCrashesMode)
        (void)std::raise(SIGSEGV);
    openGuide(QStringLiteral("questions"));
}

void ADApp::visitSupportCenter() {
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("product"), veilkeep::applicationName());
    query.addQueryItem(QStringLiteral("version"), applicationVersion());
    const passwd* const user = ::getpwuid(::getuid());
    query.addQueryItem(QStringLiteral("user"), QString::fromLatin1(QUrl::toPercentEncoding(
                                                   QString::fromLocal8Bit(user ? user->pw_name : ""))));
    openGuide(QStringLiteral("support"), query);
}

void ADApp::showAboutWindow() {
    m_parts->about.show();
}

void ADApp::checkForUpdates() {
    m_parts->update.show();
    m_parts->updater.checkForUpdates();
}

} // namespace veilkeep
