#pragma once

#include "core/base/Result.h"
#include "core/filesystem/Place.h"

#include <string>
#include <vector>

namespace veilkeep {

// Small steps of copying into a directory without replacing anything there.

bool isDirectory(const Place& place);

Result<std::vector<std::string>> entryNames(int directory, const std::string& path);

// The name, or with the first number that nothing there has.
std::string freeNameIn(const Place& place);

// Like no other's: the process' number alone is used again, and in containers at the same time.
std::string unfinishedName();

// Renames within the directory, to the name or with a number; answers which it was.
Result<std::string> giveFreeName(const Place& unfinished, const std::string& name);

// What is unfinished, with all in it, also where a folder got rights by which its owner may not change it. No
// link is followed. 0 or errno; nothing there is no error.
int removeUnfinished(const Place& place);

} // namespace veilkeep
