#include "widgets/preferences/SecretField.h"

#include "widgets/dialogs/CapsLock.h"

#include <QKeyEvent>

namespace veilkeep {

SecretField::SecretField(QWidget* parent) : QLineEdit(parent) {
    setEchoMode(QLineEdit::Password);
    setInputMethodHints(Qt::ImhHiddenText | Qt::ImhSensitiveData | Qt::ImhNoPredictiveText |
                        Qt::ImhNoAutoUppercase);
}

void SecretField::keyPressEvent(QKeyEvent* event) {
    if (const auto isOn = capsLockAfter(*event))
        emit capsLockNoticed(*isOn);
    QLineEdit::keyPressEvent(event);
}

} // namespace veilkeep
