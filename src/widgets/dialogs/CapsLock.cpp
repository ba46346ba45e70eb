#include "widgets/dialogs/CapsLock.h"

#include <QKeyEvent>

namespace veilkeep {

std::optional<bool> capsLockAfter(const QKeyEvent& press) {
    constexpr quint32 lockMask = 1U << 1; // LockMask of X, "Lock" of xkb
    const bool wasOn = (press.nativeModifiers() & lockMask) != 0;
    if (press.key() == Qt::Key_CapsLock)
        return press.isAutoRepeat() ? std::nullopt : std::optional(!wasOn);
    const QString text = press.text();
    const bool isLetter = text.size() == 1 && text.front().toLower() != text.front().toUpper();
    if (isLetter)
        return text.front().isUpper() != press.modifiers().testFlag(Qt::ShiftModifier);
    return wasOn;
}

} // namespace veilkeep
