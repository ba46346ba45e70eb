#include "widgets/dialogs/KeyboardReturn.h"

#include <QDialog>
#include <QEvent>

namespace veilkeep {

KeyboardReturn::KeyboardReturn(QDialog& dialog) : QObject(&dialog), m_dialog(dialog) {
    dialog.installEventFilter(this);
}

// A dialog that hides is told first that it is no longer active, when it is hidden already.
bool KeyboardReturn::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::WindowActivate)
        m_hasKeyboard = true;
    else if (event->type() == QEvent::WindowDeactivate)
        m_hasKeyboard = m_hasKeyboard && m_dialog.isHidden();
    else if (event->type() == QEvent::Hide && !event->spontaneous() && m_hasKeyboard) {
        m_hasKeyboard = false;
        QWidget* const parent = m_dialog.parentWidget();
        if (parent && parent->isVisible())
            parent->window()->activateWindow();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace veilkeep
