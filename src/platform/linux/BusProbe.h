#pragma once

#include "core/base/UniqueFd.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace veilkeep {

inline constexpr std::string_view askForWaysToLogIn("\0AUTH\r\n", 7);

// Greets whoever listens at the bus address, without waiting: the socket on which an answer comes, or no
// descriptor where nobody listens. Of the addresses that a text may hold the first is tried; for one that is
// no socket of this machine there is no answer to wait for.
std::optional<UniqueFd> greetBus(const std::string& address, std::string_view greeting = askForWaysToLogIn);

// Whether whoever listens at the bus address answers to a greeting within the limit: the bus library would
// wait without end. What cannot be greeted is taken on trust.
bool answersAsBus(const std::string& address, std::chrono::milliseconds limit);

} // namespace veilkeep
