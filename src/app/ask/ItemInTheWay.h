#pragma once

#include "core/base/Result.h"
#include "platform/Trash.h"

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>

namespace veilkeep {

// The item in the way of one that is to come back, as cloakWorker saw it. Its number tells it from whatever
// may have been put in its place since.
struct ItemInTheWay {
    std::string path;
    dev_t device = 0;
    ino_t inode = 0;

    static std::optional<ItemInTheWay> from(const std::string& path, std::string_view device,
                                            std::string_view inode);

    // ESTALE where something else lies there by now. After an error everything is where it was.
    [[nodiscard]] Result<void> moveTo(Trash& trash) const;
};

} // namespace veilkeep
