#pragma once

#include <cstddef>
#include <functional>

namespace veilkeep {

// Calls step(0) to step(count - 1), each once and in any order, on all processors where there are enough of
// them to be worth a thread, and comes back when all are done. Steps must not throw; where the system gives
// no thread, the caller's does the work.
void forEachInParallel(std::size_t count, const std::function<void(std::size_t)>& step);

} // namespace veilkeep
