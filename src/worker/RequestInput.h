#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

namespace veilkeep {

// What stands on standard input in place of an argument that others could read in the list of processes:
// PATH NUL IN-PROGRESS-FOLDER NUL, then the end.
struct RequestInput {
    static constexpr std::size_t maximumSize = std::size_t{1} << 20;

    std::string path;
    std::string inProgressFolder;

    // Nothing unless it is of that form, with both of them absolute and clean, and has come to its end in
    // time.
    static std::optional<RequestInput> read(int descriptor,
                                            std::chrono::milliseconds patience = std::chrono::seconds(10));
};

} // namespace veilkeep
