#pragma once

#include <cerrno>

namespace veilkeep {

// Calls again while the system says that a signal came in between. Not for close().
template <class Call>
auto retryOnInterrupt(Call call) {
    auto answer = call();
    while (answer == -1 && errno == EINTR)
        answer = call();
    return answer;
}

} // namespace veilkeep
