#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

namespace veilkeep {

// A name within an open directory.
struct Place {
    int directory = -1;
    std::string name;
};

// Of the item itself, links not followed. Nothing where it cannot be had; errno says why.
std::optional<struct stat> statusOf(const Place& place);

bool isSameItem(const struct stat& one, const struct stat& other);

} // namespace veilkeep
