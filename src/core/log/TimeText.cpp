#include "core/log/TimeText.h"

#include <algorithm>
#include <ctime>

namespace veilkeep {

std::string timeText(TimePoint time) {
    const std::time_t seconds =
        std::chrono::system_clock::to_time_t(std::chrono::floor<std::chrono::seconds>(time));
    std::tm parts = {};
    ::gmtime_r(&seconds, &parts); // cannot fail: nanoseconds in 64 bits end in the year 2262
    char text[64];
    return std::string(text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts));
}

std::string timeTextForName(TimePoint time) {
    std::string text = timeText(time);
    std::replace(text.begin(), text.end(), ':', '-');
    return text;
}

bool isTimeTextForName(std::string_view text) {
    constexpr std::string_view shape = "0000-00-00T00-00-00Z";
    if (text.size() != shape.size())
        return false;
    for (std::size_t i = 0; i < shape.size(); ++i)
        if (shape[i] == '0' ? text[i] < '0' || text[i] > '9' : text[i] != shape[i])
            return false;
    return true;
}

} // namespace veilkeep
