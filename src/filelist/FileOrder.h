#pragma once

#include "filelist/FileList.h"

#include <cstddef>
#include <vector>

namespace veilkeep {

enum class SortKey { Name, Place, Size, State };

// The files' positions as the key orders them, for FileList::sort. Names and places are compared as the
// user's language does, case ignored, and then by their bytes; an unknown size is the smallest. What is equal
// stays as it lies. Main thread.
std::vector<std::size_t> fileOrder(const std::vector<ListedFile>& files, SortKey key, bool ascending);

} // namespace veilkeep
