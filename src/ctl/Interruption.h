#pragma once

namespace veilkeep {

// SIGINT, SIGTERM and SIGHUP as a question that a batch asks itself between two items; one that was ignored
// from the start (nohup) stays so. A broken pipe and a file that must not grow show at the write that meets
// them.
class Interruption {
public:
    static void watch();
    static bool isAsked();
};

} // namespace veilkeep
