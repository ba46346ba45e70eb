#pragma once

#include "core/base/Result.h"

#include <string>

namespace veilkeep {

// A file in the data directory that says that items of AutoHide groups may lie visible, so that the next
// start can hide them where this program found no time to (a crash, a power cut). Main thread.
class AutoHideMark {
public:
    explicit AutoHideMark(std::string dataDirectory);

    bool isSet() const; // asks the disk

    // Durable when they return without an error.
    [[nodiscard]] Result<void> set();
    [[nodiscard]] Result<void> clear();

private:
    std::string m_path;
};

} // namespace veilkeep
