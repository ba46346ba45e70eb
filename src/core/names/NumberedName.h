#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace veilkeep {

// "name 2.ext" for "name.ext" and the number 2; a name without an extension, and every directory's, gets the
// number at its end. The part before the number is cut between characters where the whole would take more
// bytes.
std::string numberedName(std::string_view name, unsigned int number, bool isDirectory,
                         std::size_t longestName);

// The first such name, with the numbers 2 to 9,999, that the function takes; the last one where it takes
// none.
std::string firstNumberedName(std::string_view name, bool isDirectory, std::size_t longestName,
                              const std::function<bool(const std::string& numbered)>& takes);

} // namespace veilkeep
