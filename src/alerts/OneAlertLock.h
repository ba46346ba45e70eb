#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace veilkeep {

// Lets one alert at a time be up, whichever thread asks. It belongs to the thread that asked, and as well to
// the one that shows that alert: neither is ever made to wait for it, since it could not end then. Any
// thread.
class OneAlertLock {
public:
    // The one of this process, made on first use and never destroyed.
    static OneAlertLock& onlyOneAlertSheetAtATimeLock();

    // What a thread does on its way to the lock.
    struct Waiting {
        std::function<bool()> givesUp;      // looked at first and after each wakeWaiting()
        std::function<void()> betweenLooks; // where set, called again and again
    };

    // False: given up, and nothing is to be released. Taken twice, it is released twice.
    [[nodiscard]] bool take(const Waiting& waiting);
    void release();

    void showOnThisThread(); // by the thread that shows the alert of the one that took the lock
    void wakeWaiting();
    bool isTaken() const;

private:
    bool isOpenTo(std::thread::id thread) const;

    mutable std::mutex m_mutex; // everything below
    std::condition_variable m_changed;
    int m_depth = 0;
    std::thread::id m_asking;
    std::thread::id m_showing;
};

} // namespace veilkeep
