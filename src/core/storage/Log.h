#pragma once

#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>

namespace veilkeep {

// The program's log: one file of mode 0600, one line an entry ("2026-01-31T12:00:00Z pid text"), turned over
// to "….1" at 1 MiB. Control bytes within a text are written escaped. Several processes and threads write at
// the same time. What cannot be written is dropped: a log never stands in the way of the work.
class Log {
public:
    static constexpr std::size_t turnOverSize = std::size_t{1} << 20;

    explicit Log(std::string path);

    // "Veilkeep.log" in the user's state directory for Veilkeep.
    static Log& shared();

    void write(std::string_view text);

    const std::string& path() const { return m_path; }

private:
    std::string m_path;
    std::mutex m_mutex;
};

// A line to the shared log, its parts put together.
void logLine(std::string_view text);

} // namespace veilkeep
