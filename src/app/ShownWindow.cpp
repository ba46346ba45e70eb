#include "app/ShownWindow.h"

#include "platform/linux/ActivationToken.h"

namespace veilkeep {

bool ShownWindow::isVisible() const {
    return m_window && m_window->isVisible();
}

void ShownWindow::show() {
    if (!m_window) {
        m_window = m_make();
        emit made(*m_window);
    }
    if (m_window->isMinimized())
        m_window->showNormal();
    else
        m_window->show();
    useActivationToken(m_token);
    m_token.clear();
    m_window->raise();
    m_window->activateWindow();
    emit shown();
}

void ShownWindow::close() {
    if (!m_window)
        return;
    m_window->closePanels();
    m_window->hide();
}

// The window comes to the front when it is shown, which follows at once.
void ShownWindow::activate(bool /*ignoringOthers*/) {}

} // namespace veilkeep
