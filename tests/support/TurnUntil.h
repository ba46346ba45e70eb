#pragma once

#include "tests/support/WaitUntil.h"

#include <QCoreApplication>

namespace veilkeep::test {

// waitUntil() with the event loop turning meanwhile.
inline bool turnUntil(const std::function<bool()>& condition,
                      std::chrono::milliseconds limit = std::chrono::seconds(20)) {
    return waitUntil([&] { return QCoreApplication::processEvents(), condition(); }, limit);
}

} // namespace veilkeep::test
