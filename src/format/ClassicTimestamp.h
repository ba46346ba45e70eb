#pragma once

#include <cstdint>
#include <optional>

#include <QDateTime>

namespace veilkeep {

struct FileTime;

// An instant as seconds and a fraction since 1 January 1904, 00:00:00 GMT.
struct ClassicTimestamp {
    std::uint16_t highSeconds = 0;
    std::uint32_t lowSeconds = 0;
    std::uint16_t fraction = 0; // of 65535

    // Nothing for an instant that it cannot hold.
    static std::optional<ClassicTimestamp> fromFileTime(const FileTime& time);

    double secondsSince1904() const;
    QDateTime dateTime() const; // local time
};

} // namespace veilkeep
