#pragma once

#include <cstddef>
#include <filesystem>
#include <iterator>

namespace veilkeep::test {

// How many descriptors this process has open.
inline std::ptrdiff_t openDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

} // namespace veilkeep::test
