// Alias records from nowhere: the input as a whole record, and as the content of one whose count and digest
// are right.
#include "core/tracking/AliasRecord.h"
#include "tests/fuzz/Require.h"

#include <cstddef>
#include <cstdint>

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace {

using namespace veilkeep;

void appendNumber(std::string& bytes, std::uint64_t number, int size) {
    for (int i = 0; i < size; ++i)
        bytes.push_back(static_cast<char>(number >> (8 * i) & 0xff));
}

std::string sealed(const std::string& content) {
    constexpr std::size_t headerSize = 9, digestSize = 8;
    std::string bytes = "VkAl";
    appendNumber(bytes, headerSize + content.size() + digestSize, 4);
    bytes += '\x01';
    bytes += content;
    appendNumber(bytes, XXH3_64bits(bytes.data(), bytes.size()), digestSize);
    return bytes;
}

void readWriteRead(const std::string& bytes) {
    const auto record = decodeAliasRecord(bytes);
    if (!record)
        return;
    test::require(!record->lastPath.empty(), "each record has a path");
    const std::string written = encodeAliasRecord(*record);
    test::require(decodeAliasRecord(written) == record, "what was written reads as the same");
    test::require(!decodeAliasRecord(written.substr(0, written.size() - 1)), "a cut record is none");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    readWriteRead(input);
    readWriteRead(sealed(input));
    return 0;
}
