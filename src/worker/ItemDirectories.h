#pragma once

#include "core/base/UniqueFd.h"

#include <string>
#include <string_view>

namespace veilkeep {

// Opens the directory that the absolute path names, however long the path is. As an ordinary user links on
// the way are followed; as root none is. Without a descriptor errno says why.
UniqueFd openDirectory(std::string_view path);

// The ".SYS_INDEX" of an open directory; never a link or anything but a directory.
struct HiddenDirectory {
    UniqueFd fd;       // -1 with `error` set
    bool made = false; // by this call
    int error = 0;     // errno
};

HiddenDirectory openHiddenDirectory(int parent);

// Whether the open directory is itself the ".SYS_INDEX" of the one that holds it, by whatever name it was
// reached.
bool isHiddenDirectory(int directory);

// Makes it where it is missing: with the parent's mode, and as root with the parent's owner.
HiddenDirectory openOrMakeHiddenDirectory(int parent);

// Takes it away when it is empty.
void removeHiddenDirectoryIfEmpty(int parent);

} // namespace veilkeep
