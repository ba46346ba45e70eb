#pragma once

#include <chrono>
#include <string>

namespace veilkeep {

// Whether whoever listens at the bus address answers to a greeting within the limit: the bus library would
// wait without end. Of the addresses that a text may hold the first is tried; one that is no socket of this
// machine is taken on trust.
bool answersAsBus(const std::string& address, std::chrono::milliseconds limit);

} // namespace veilkeep
