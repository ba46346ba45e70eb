#include "app/ADApp.h"
#include "app/ADAppParts.h"

#include "widgets/images/ProgramImages.h"

namespace veilkeep {

// The icon is there as long as the desktop has a place for it; without its setting, only where nothing else
// leads to the window. One of both is always there, the icon or the windows' entries in the taskbar.
void ADApp::setStatusBarItem() {
    m_parts->statusItem.reset();
    m_parts->statusMenu.reset();
    m_parts->taskbarEntries.update();
    if (!m_parts->prefs.showsMenuIcon())
        return;
    m_parts->statusMenu = std::make_unique<StatusMenu>(m_parts->list.groups(), *this);
    connect(m_parts->statusMenu.get(), &StatusMenu::hideMenuClicked, this,
            [this](const ListedGroup& group) { hideOrShowGroup(group, true); });
    connect(m_parts->statusMenu.get(), &StatusMenu::unhideMenuClicked, this,
            [this](const ListedGroup& group) { hideOrShowGroup(group, false); });
    m_parts->statusItem = std::make_unique<TrayIcon>(m_parts->trayHost, m_parts->statusMenu->statusMenu(),
                                                     programImage::named("VeilkeepMenu"),
                                                     programImage::named("VeilkeepMenuPressed"));
    connect(m_parts->statusItem.get(), &TrayIcon::activated, this, &ADApp::showVeilkeep);
    m_parts->taskbarEntries.update();
}

// Not while the windows have no entries in the taskbar.
void ADApp::removeStatusBarItem() {
    if (m_parts->prefs.dockIconIsHidden())
        return;
    m_parts->statusItem.reset();
    m_parts->statusMenu.reset();
    m_parts->taskbarEntries.update();
}

bool ADApp::hasStatusBarItem() const {
    return m_parts->hasStatusItem();
}

} // namespace veilkeep
