#pragma once

#include <chrono>
#include <functional>
#include <optional>

namespace veilkeep {

// Something to be called about every 50 ms while a thread waits for child processes, such as drawing a
// window. The rhythm runs on over any number of waits, so that a thousand short ones do not starve it.
// Belongs to one thread; the call must not throw.
class Tick {
public:
    using Clock = std::chrono::steady_clock;

    Tick() = default; // nothing to call
    explicit Tick(std::function<void()> call,
                  std::chrono::milliseconds interval = std::chrono::milliseconds(50));

    std::optional<Clock::time_point> nextDue() const; // none when there is nothing to call
    void callWhenDue();

private:
    std::function<void()> m_call;
    std::chrono::milliseconds m_interval{};
    Clock::time_point m_due;
};

} // namespace veilkeep
