#pragma once

#include <cstdlib>

namespace veilkeep::test {

// How many rounds a random test runs: the usual figure, or the long one of "scripts/test --long".
inline int rounds(int usual, int many) {
    return std::getenv("VEILKEEP_LONG") ? many : usual;
}

} // namespace veilkeep::test
