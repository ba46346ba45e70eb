#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace veilkeep {

using TimePoint = std::chrono::system_clock::time_point;

// "2026-01-31T12:00:00Z": universal time, in whole seconds.
std::string timeText(TimePoint time);

// The same for a file's name: "2026-01-31T12-00-00Z". Such texts sort as their times do.
std::string timeTextForName(TimePoint time);
bool isTimeTextForName(std::string_view text);

} // namespace veilkeep
