#pragma once

#include "core/base/Error.h"

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

namespace veilkeep {

// The program's log: one file of mode 0600, one line an entry ("2026-01-31T12:00:00Z pid text"), turned over
// to "….1" before it would pass 1 MiB; what "….1" held is gone then. Control bytes, backslashes and bytes
// that are not UTF-8 are written as "\x0a". Several processes and threads write at the same time; each line
// is whole. What cannot be written is dropped: a log never stands in the way of the work. errno is untouched.
class Log {
public:
    static constexpr std::size_t turnOverSize = std::size_t{1} << 20;
    static constexpr std::size_t maximumTextSize = std::size_t{1} << 16; // what is beyond is cut off: "[cut]"

    // The directory is made (0700) with the first line. Without an absolute path nothing is written. After
    // the wait for other writers' lock a line is written all the same, and the log grows until the lock is
    // free.
    explicit Log(std::string path, std::chrono::milliseconds lockWait = std::chrono::milliseconds(200));

    // "Veilkeep.log" in the user's state directory for Veilkeep. Root on behalf of another user writes
    // nothing: that user could set links where the log lies.
    static Log& shared();

    // For a program that changes nothing on the disk: from here on the shared log writes nothing.
    static void keepSharedEmpty();

    void write(std::string_view text);

    const std::string& path() const { return m_path; }

private:
    std::string m_path;
    std::chrono::milliseconds m_lockWait;
};

// A line to the shared log; with an error as "what: step path: reason".
void logLine(std::string_view text);
void logError(std::string_view what, const Error& error);

} // namespace veilkeep
