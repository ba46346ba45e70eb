#pragma once

#include "worker/Caller.h"
#include "worker/WorkerRequest.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// Whether the person at the screen may be asked for this request: it says so and so does the environment
// (VEILKEEP_MAY_ASK=1, no VEILKEEP_NOBODY_THERE=1), and there is a display. Never as root.
bool mayAsk(const WorkerRequest& request, const Caller& caller);

// One question to the person at the screen, put by "Veilkeep --ask KIND" as a process of its own, because
// the application itself waits for this worker. What the question is about goes to its standard input, since
// every user may read command lines: fields that each end with a NUL, then one NUL more; after that the input
// stays open as long as the answer is wanted. The answer is one line.
struct Question {
    static constexpr std::size_t maximumSize = std::size_t{64} << 10; // of all fields, their NULs counted
    static constexpr std::size_t longestAnswer = 64;

    std::string kind;
    std::vector<std::string> fields; // none is empty or holds a NUL

    // Waits for a person, so without a limit of time. Nothing where the question could not be put, the
    // process answered with anything but a line, or the wait ended: with an ending signal, or with the reader
    // of this worker's own answer.
    std::optional<std::string> ask() const;
};

// Whether the reader of this process' standard output, where that is a pipe, is gone.
bool readerIsGone();

} // namespace veilkeep
