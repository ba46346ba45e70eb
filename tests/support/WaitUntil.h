#pragma once

#include <chrono>
#include <functional>

namespace veilkeep::test {

// Asks for the condition every millisecond until it holds; false when it did not within the limit. For what
// another process does without telling: where there is a pipe or an event to wait for, wait for that.
bool waitUntil(const std::function<bool()>& condition,
               std::chrono::milliseconds limit = std::chrono::seconds(20));

} // namespace veilkeep::test
