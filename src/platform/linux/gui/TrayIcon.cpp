#include "platform/linux/gui/TrayIcon.h"

#include <QGuiApplication>

namespace veilkeep {

TrayIcon::TrayIcon(const TrayHost& host, QMenu& menu, const QIcon& plain, const QIcon& pressed)
    : m_menu(menu), m_plain(plain), m_pressed(pressed) {
    connect(&host, &TrayHost::availableChanged, this, &TrayIcon::follow);
    connect(&m_menu, &QMenu::aboutToShow, this, [this] { setPressed(true); });
    connect(&m_menu, &QMenu::aboutToHide, this, [this] { setPressed(false); });
    connect(&m_menu, &QMenu::triggered, this,
            [this] { setPressed(false); }); // not every host tells of its end
    follow(host.isAvailable());
}

void TrayIcon::follow(bool isAvailable) {
    m_icon.reset();
    if (!isAvailable)
        return;
    m_icon = std::make_unique<QSystemTrayIcon>(m_plain);
    connect(m_icon.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
                    emit activated();
            });
    m_icon->setToolTip(QGuiApplication::applicationDisplayName()); // no names of items: desktops keep it
    m_icon->setContextMenu(&m_menu);
    m_icon->show();
}

void TrayIcon::setPressed(bool isPressed) {
    if (m_icon)
        m_icon->setIcon(isPressed ? m_pressed : m_plain);
}

} // namespace veilkeep
