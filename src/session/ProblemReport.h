#pragma once

#include "core/base/Result.h"

#include <QString>

#include <string>
#include <vector>

namespace veilkeep {

// What a developer needs to know of an exception that nobody caught, or of a crash of a former run, as a text
// for the user to look at and to pass on. Holds no paths and names of items. Any thread.
struct ProblemReport {
    static constexpr std::size_t mostKept = 10;

    QString reason;
    QString displayPlatform;                        // "xcb", "wayland"
    std::vector<void*> stack;                       // as backtrace() gives it
    std::vector<std::string> itemNames;             // of items and groups, which the log may hold
    std::vector<std::string> stackOfFormerRun = {}; // as texts

    std::string text() const;

    // A text as "Problem Report DATE.txt" (0600) in the state directory, whose oldest reports are removed;
    // its path.
    [[nodiscard]] static Result<std::string> write(const std::string& text);
};

} // namespace veilkeep
