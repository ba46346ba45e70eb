#include "prefs/FinderPlugin.h"

#include "core/log/Log.h"
#include "filelist/Texts.h"

#include <QCoreApplication>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(FinderPlugin)
};

template <class Entry>
QString pathsOf(const std::vector<Entry>& entries) {
    QStringList paths;
    for (const Entry& entry : entries)
        paths.append(shownPath(entry.path));
    return paths.join(QLatin1String(", "));
}

void log(const FileManagerChange& change) {
    for (const auto* errors : {&change.noDirectory, &change.notChanged})
        for (const Error& error : *errors)
            logError("An entry in the menu of a file manager was left as it is", error);
}

} // namespace

void FinderPlugin::setFinderPluginInstalled(bool /*install*/) {
    finderPluginInstalled() ? remove() : install();
}

void FinderPlugin::renew() {
    log(m_menu.renew());
}

void FinderPlugin::remove() {
    const FileManagerChange change = m_menu.remove();
    log(change);
    if (change.hasFailed())
        warn(Texts::tr("Finder plugin could not be uninstalled."),
             Texts::tr("Could not uninstall plugin from %1. Try to remove it manually.")
                 .arg(pathsOf(change.notChanged)));
    offerRestart(change, Texts::tr("Plugin successfully uninstalled"),
                 Texts::tr("Plugin successfully uninstalled from %1\n"
                           "Please restart Finder to apply the changes."));
    tellWhatStays(change);
}

void FinderPlugin::tellWhatStays(const FileManagerChange& change) {
    if (change.forEverybody.empty())
        return;
    QStringList managers;
    for (const std::string& manager : change.forEverybody)
        managers.append(QString::fromStdString(manager));
    Alert alert;
    alert.style = Alert::Style::Informational;
    alert.title = Texts::tr("Entries for all users stay");
    alert.message = Texts::tr("%1: the entries came with %2 for all users of this computer, and go with it.")
                        .arg(managers.join(QLatin1String(", ")), applicationName());
    m_alerts.runAlert(std::move(alert), {Texts::tr("OK")});
}

void FinderPlugin::install() {
    if (!m_menu.isSourceThere())
        return;
    const QString failed = Texts::tr("Finder plugin could not be installed.");
    if (!m_menu.isAnyManagerPresent())
        return warn(
            failed,
            Texts::tr("No file manager was found that %1 can have an entry in.").arg(applicationName()));
    const FileManagerChange change = m_menu.install();
    log(change);
    if (!change.noDirectory.empty())
        warn(failed, Texts::tr("Could not create directory for Finder plugins: %1\n"
                               "Try to create it manually and repeat the installation.")
                         .arg(pathsOf(change.noDirectory)));
    if (!change.notChanged.empty())
        warn(failed, Texts::tr("Could not install plugin to %1.").arg(pathsOf(change.notChanged)));
    offerRestart(change, Texts::tr("Plugin was successfully installed"),
                 Texts::tr("Plugin was successfully installed to %1\n"
                           "Please restart Finder to start using it."));
}

void FinderPlugin::warn(const QString& title, const QString& text) {
    m_alerts.ADRunWarningAlert(title, text, Texts::tr("OK"), {}, {});
}

void FinderPlugin::offerRestart(const FileManagerChange& change, const QString& title, const QString& text) {
    if (change.toRestart.empty())
        return;
    Alert alert;
    alert.style = Alert::Style::Informational;
    alert.title = title;
    alert.message = text.arg(pathsOf(change.toRestart));
    const QStringList buttons{Texts::tr("Restart Finder"), Texts::tr("I'll restart it later")};
    if (m_alerts.runAlert(std::move(alert), buttons) == Alerts::firstButton)
        restart(change);
}

void FinderPlugin::restart(const FileManagerChange& change) {
    for (const std::string& manager : m_menu.restart(change.toRestart))
        warn(Texts::tr("%1 could not be restarted.").arg(QString::fromStdString(manager)),
             Texts::tr("Please end it, if it is still running, and start it again yourself."));
}

} // namespace veilkeep
