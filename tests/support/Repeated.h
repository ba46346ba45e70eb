#pragma once

#include "core/records/Value.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace veilkeep::test {

inline std::string repeated(std::string_view text, std::size_t times) {
    std::string all;
    while (times-- > 0)
        all += text;
    return all;
}

// Lists of one element, one in the other.
inline Value nestedLists(int depth) {
    Value value = std::int64_t{1};
    for (int level = 0; level < depth; ++level)
        value = ValueList{value};
    return value;
}

} // namespace veilkeep::test
