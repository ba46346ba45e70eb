#pragma once

#include "core/records/Value.h"

#include <optional>
#include <string_view>

namespace veilkeep {

// Images for groups, as PNG of 42 x 42. Nothing where there is none that can be read. Made by the desktop
// application; main thread.
class GroupImages {
public:
    virtual ~GroupImages() = default;

    virtual std::optional<Bytes> imageNamed(std::string_view name) const = 0; // of the program's own
    virtual std::optional<Bytes> imageAtPath(std::string_view path) const = 0;
    virtual std::optional<Bytes> imageIn(std::string_view content) const = 0; // of such a file

protected:
    GroupImages() = default;
    GroupImages(const GroupImages&) = default;
    GroupImages& operator=(const GroupImages&) = default;
};

} // namespace veilkeep
