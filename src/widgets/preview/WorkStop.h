#pragma once

#include "core/base/UniqueFd.h"

#include <sys/eventfd.h>

#include <atomic>
#include <cstdint>

namespace veilkeep {

// Tells work on other threads that nobody wants its result any more. Any thread.
class WorkStop {
public:
    WorkStop() : m_event(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

    void stop() {
        m_isStopped = true;
        const std::uint64_t one = 1;
        [[maybe_unused]] const auto written = ::write(m_event.get(), &one, sizeof one); // only ever from 0
    }
    bool isStopped() const { return m_isStopped; }

    // Readable from then on: for who waits for a child.
    int descriptor() const { return m_event.get(); }

private:
    std::atomic<bool> m_isStopped = false;
    UniqueFd m_event;
};

} // namespace veilkeep
