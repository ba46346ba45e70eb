#pragma once

#include "platform/linux/TrayHost.h"

#include <QIcon>
#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>

#include <memory>

namespace veilkeep {

// The program in the tray, as long as there is one: made when a host comes, never before, since the window
// system asks for one only once in a process. The menu is the caller's and outlives it. Main thread.
class TrayIcon : public QObject {
    Q_OBJECT

public:
    // Pressed is shown while the menu is open.
    TrayIcon(const TrayHost& host, QMenu& menu, const QIcon& plain, const QIcon& pressed);

    bool isShown() const { return m_icon != nullptr; }

signals:
    void activated(); // clicked; some hosts show the menu instead

private:
    void follow(bool isAvailable);
    void setPressed(bool isPressed);

    QMenu& m_menu;
    QIcon m_plain;
    QIcon m_pressed;
    std::unique_ptr<QSystemTrayIcon> m_icon;
};

} // namespace veilkeep
