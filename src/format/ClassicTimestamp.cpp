#include "format/ClassicTimestamp.h"

#include "core/tracking/FileIdentity.h"

#include <cmath>

namespace veilkeep {
namespace {

constexpr std::int64_t secondsFrom1904To1970 = 2'082'844'800;
constexpr double fractionsOfASecond = 65535;

} // namespace

std::optional<ClassicTimestamp> ClassicTimestamp::fromFileTime(const FileTime& time) {
    constexpr std::int64_t end = std::int64_t{1} << 48;
    if (time.seconds < -secondsFrom1904To1970 || time.seconds >= end - secondsFrom1904To1970)
        return std::nullopt;
    const auto seconds = static_cast<std::uint64_t>(time.seconds + secondsFrom1904To1970);
    return ClassicTimestamp{static_cast<std::uint16_t>(seconds >> 32), static_cast<std::uint32_t>(seconds),
                            static_cast<std::uint16_t>(time.nanoseconds * fractionsOfASecond / 1e9)};
}

double ClassicTimestamp::secondsSince1904() const {
    return std::ldexp(static_cast<double>(highSeconds), 32) + lowSeconds + fraction / fractionsOfASecond;
}

QDateTime ClassicTimestamp::dateTime() const {
    const double seconds = secondsSince1904() - double{secondsFrom1904To1970};
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(std::floor(seconds * 1000)));
}

} // namespace veilkeep
