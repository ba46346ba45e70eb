#pragma once

#include <optional>

namespace veilkeep {

// Which of a desktop's signs count as a locked screen.
//
// Where the locker tells logind, whose LockedHint shows it, that decides: a screen saver also covers screens
// that it does not lock. A locker is known to tell once it has said "locked", or by its kind. Elsewhere the
// screen saver decides. logind's Lock is a wish to the locker, who may not follow it, and most tell of what
// they did; only until one of them has a word it is taken for the lock itself, because lockers that listen to
// nothing but that wish tell of nothing else either.
class LockSigns {
public:
    bool isLocked() const { return isHintUsed() ? *m_hint : m_isCovered || m_isAsked; }

    void setHint(bool isLocked) {
        m_hint = isLocked;
        m_isHintSeenTrue = m_isHintSeenTrue || isLocked;
        m_isAsked = m_isAsked && !m_isHintSeenTrue;
    }
    void setHintingLocker(bool isRunning) { m_isHintingLocker = isRunning; }
    void setCovered(bool isCovered) {
        m_isCovered = isCovered;
        m_isAsked = false;
    }
    void askToLock() { m_isAsked = true; }
    void noticeUser() { m_isAsked = false; }

private:
    bool isHintUsed() const { return m_hint && (m_isHintSeenTrue || m_isHintingLocker); }

    std::optional<bool> m_hint; // none while logind has no session for it
    bool m_isHintSeenTrue = false;
    bool m_isHintingLocker = false;
    bool m_isCovered = false;
    bool m_isAsked = false;
};

} // namespace veilkeep
