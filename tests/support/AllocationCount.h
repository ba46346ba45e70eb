#pragma once

#include <cstddef>

namespace veilkeep::test {

// Bytes that operator new has handed out so far in this program, given back or not.
std::size_t allocatedBytes();

} // namespace veilkeep::test
