#pragma once

#include "core/base/UniqueFd.h"

#include <chrono>
#include <string>

namespace veilkeep {

// The lock that KDE programs take before they change the file of recently used documents: a file beside it
// with process, program and host, one to a line, that exists while it is held and is flocked by its holder.
// One that a process left behind is taken away. GTK programs know no lock.
class RecentlyUsedLock {
public:
    // Waits that long for another holder at most. A caller who did not get it had better look twice at what
    // it replaces.
    RecentlyUsedLock(const std::string& file, std::chrono::milliseconds wait);
    ~RecentlyUsedLock();
    RecentlyUsedLock(const RecentlyUsedLock&) = delete;
    RecentlyUsedLock& operator=(const RecentlyUsedLock&) = delete;

    bool isHeld() const { return static_cast<bool>(m_lock); }

private:
    bool tryLock();

    std::string m_path;
    UniqueFd m_lock;
};

} // namespace veilkeep
