#include "widgets/dialogs/PasswordWindow.h"

#include "prefs/PasswordManager.h"
#include "widgets/dialogs/ModalRun.h"
#include "widgets/dialogs/PasswordPanel.h"

namespace veilkeep {

PasswordWindow::PasswordWindow() = default;
PasswordWindow::~PasswordWindow() = default;

void PasswordWindow::run(PasswordManager& manager, const QString& title, const QString& line) {
    if (m_panel)
        return;
    m_panel = std::make_unique<PasswordPanel>(title, line);
    QObject::connect(m_panel.get(), &PasswordPanel::entered, m_panel.get(),
                     [&manager](const QString& password) { manager.okClick(password); });
    QObject::connect(m_panel.get(), &PasswordPanel::cancelled, m_panel.get(),
                     [&manager] { manager.cancelClick(); });
    if (runModal(*m_panel))
        m_panel.reset();
    else
        static_cast<void>(m_panel.release()); // gone already
}

void PasswordWindow::showWrongEntries(int count) {
    if (m_panel)
        m_panel->showWrongEntries(count);
}

void PasswordWindow::close() {
    closePopups();
    if (m_panel)
        m_panel->finish();
}

} // namespace veilkeep
