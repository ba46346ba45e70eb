#include "core/process/Tick.h"

#include <utility>

namespace veilkeep {

Tick::Tick(std::function<void()> call, std::chrono::milliseconds interval)
    : m_call(std::move(call)), m_interval(interval), m_due(Clock::now() + interval) {}

std::optional<Tick::Clock::time_point> Tick::nextDue() const {
    return m_call ? std::optional(m_due) : std::nullopt;
}

void Tick::callWhenDue() {
    if (!m_call || Clock::now() < m_due)
        return;
    m_call();
    m_due = Clock::now() + m_interval; // from its end: a slow call leaves room for the work between
}

} // namespace veilkeep
