#pragma once

namespace veilkeep {

// SIGINT, SIGTERM and SIGHUP as a question that a batch asks itself between two items. A broken pipe shows at
// the write that meets it.
class Interruption {
public:
    static void watch();
    static bool isAsked();
};

} // namespace veilkeep
