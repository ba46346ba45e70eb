#pragma once

#include "core/base/UniqueFd.h"

#include <string>

namespace veilkeep {

// A descriptor for looking at the item itself (O_PATH), however long its absolute path is; a link there is
// not followed, nor is it when "/" follows its name. Without a descriptor errno says why.
UniqueFd openItemAt(const std::string& path);

// Whether there is anything at the path; a link counts wherever it leads. False where it cannot be looked at.
bool itemExistsAt(const std::string& path);

// Whether it is a directory itself, no link to one.
bool isDirectoryAt(const std::string& path);

// Whether it is a file that this user may run; links are followed.
bool isProgramAt(const std::string& path);

} // namespace veilkeep
