#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace veilkeep::test {

inline void appendNumber(std::string& bytes, std::uint64_t number, int size) {
    for (int i = 0; i < size; ++i)
        bytes.push_back(static_cast<char>(number >> (8 * i) & 0xff));
}

// The content as a record whose count and digest are right.
inline std::string sealedAliasRecord(const std::string& content) {
    constexpr std::size_t headerSize = 9, digestSize = 8;
    std::string bytes = "VkAl";
    appendNumber(bytes, headerSize + content.size() + digestSize, 4);
    bytes += '\x01';
    bytes += content;
    appendNumber(bytes, XXH3_64bits(bytes.data(), bytes.size()), digestSize);
    return bytes;
}

} // namespace veilkeep::test
