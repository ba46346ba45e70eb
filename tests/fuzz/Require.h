#pragma once

#include <cstdio>
#include <cstdlib>

namespace veilkeep::test {

// Ends the fuzz target so that the input is kept as a finding.
inline void require(bool condition, const char* what) {
    if (condition)
        return;
    std::fprintf(stderr, "not so: %s\n", what);
    std::abort();
}

} // namespace veilkeep::test
