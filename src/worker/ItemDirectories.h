#pragma once

#include "core/base/UniqueFd.h"
#include "core/environment/UserDatabase.h"

#include <string>
#include <string_view>

namespace veilkeep {

// Opens the directory that the absolute path names, however long the path is. As an ordinary user links on
// the way are followed; as root none is. Without a descriptor errno says why.
UniqueFd openDirectory(std::string_view path);

// The ".SYS_INDEX" of an open directory; never a link or anything but a directory. With `askedBy`, the user
// whom administrator rights are used for, it is one of the parent's owner, of that user or, open to all, of
// root's, and nobody may write to it who may not write to the parent; else the error is ENOTDIR.
struct HiddenDirectory {
    UniqueFd fd;       // not to be used with `error` set
    bool made = false; // by this call
    int error = 0;     // errno
};

HiddenDirectory openHiddenDirectory(int parent, const User* askedBy);

// Whether the open directory is itself the ".SYS_INDEX" of the one that holds it, by whatever name it was
// reached.
bool isHiddenDirectory(int directory);

// Makes it where it is missing: with the parent's mode, and as root with the parent's owner. One in which
// others could take away what the parent, being sticky, keeps from them is refused with ENOTDIR.
HiddenDirectory openOrMakeHiddenDirectory(int parent, const User* askedBy);

// Takes it away when it is empty.
void removeHiddenDirectoryIfEmpty(int parent);

} // namespace veilkeep
