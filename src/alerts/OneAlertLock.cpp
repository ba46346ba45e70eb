#include "alerts/OneAlertLock.h"

#include <cassert>
#include <chrono>

namespace veilkeep {

OneAlertLock& OneAlertLock::onlyOneAlertSheetAtATimeLock() {
    static auto* const lock = new OneAlertLock;
    return *lock;
}

bool OneAlertLock::take(const Waiting& waiting) {
    constexpr std::chrono::milliseconds look(10);
    const auto thread = std::this_thread::get_id();
    std::unique_lock lock(m_mutex);
    while (!waiting.givesUp()) {
        if (isOpenTo(thread)) {
            if (m_depth++ == 0)
                m_asking = m_showing = thread;
            return true;
        }
        if (!waiting.betweenLooks) {
            m_changed.wait(lock);
            continue;
        }
        m_changed.wait_for(lock, look);
        lock.unlock();
        waiting.betweenLooks();
        lock.lock();
    }
    return false;
}

void OneAlertLock::release() {
    const std::lock_guard lock(m_mutex);
    assert(m_depth > 0);
    if (--m_depth > 0)
        return;
    m_asking = m_showing = {};
    m_changed.notify_all();
}

void OneAlertLock::showOnThisThread() {
    const std::lock_guard lock(m_mutex);
    m_showing = std::this_thread::get_id();
    m_changed.notify_all();
}

void OneAlertLock::wakeWaiting() {
    const std::lock_guard lock(m_mutex);
    m_changed.notify_all();
}

bool OneAlertLock::isTaken() const {
    const std::lock_guard lock(m_mutex);
    return m_depth > 0;
}

bool OneAlertLock::isOpenTo(std::thread::id thread) const {
    return m_depth == 0 || m_asking == thread || m_showing == thread;
}

} // namespace veilkeep
