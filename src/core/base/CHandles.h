#pragma once

#include <dirent.h>

#include <cstdlib>
#include <memory>

// Owners of what C functions hand out.
namespace veilkeep {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

template <class T>
using MallocedPointer = std::unique_ptr<T, Free>;

struct CloseDirectory {
    void operator()(DIR* directory) const { ::closedir(directory); }
};

using DirectoryStream = std::unique_ptr<DIR, CloseDirectory>;

} // namespace veilkeep
