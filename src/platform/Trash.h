#pragma once

#include "core/base/Result.h"

#include <string>

namespace veilkeep {

// The desktop's trash. Any thread.
class Trash {
public:
    virtual ~Trash() = default;

    // ENOTSUP where the item's volume has none; the item is where it was after an error.
    [[nodiscard]] virtual Result<void> moveToTrash(const std::string& path) = 0;

protected:
    Trash() = default;
    Trash(const Trash&) = default;
    Trash& operator=(const Trash&) = default;
};

} // namespace veilkeep
