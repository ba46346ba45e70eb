#pragma once

#include "alerts/Alerts.h"
#include "platform/FileManagerMenu.h"

#include <QString>

namespace veilkeep {

// The switch for the entries in the menus of file managers, with what it has to tell. Neither the alerts nor
// the menus are owned; main thread.
class FinderPlugin {
public:
    FinderPlugin(FileManagerMenu& menu, Alerts& alerts) : m_menu(menu), m_alerts(alerts) {}

    bool finderPluginInstalled() const { return m_menu.isInstalled(); }

    // Does the opposite of what is on the disk, whatever the check box that was clicked shows.
    void setFinderPluginInstalled(bool install);

    // At the start of the program: entries of an older version, or of a copy that lay elsewhere. What goes
    // wrong goes to the log.
    void renew();

private:
    void install();
    void remove();
    void tellWhatStays(const FileManagerChange& change);
    void warn(const QString& title, const QString& text);
    void offerRestart(const FileManagerChange& change, const QString& title, const QString& text);
    void restart(const FileManagerChange& change);

    FileManagerMenu& m_menu;
    Alerts& m_alerts;
};

} // namespace veilkeep
