// Alias records from nowhere: the input as a whole record, and as the content of one whose count and digest
// are right.
#include "core/tracking/AliasRecord.h"
#include "tests/fuzz/Require.h"
#include "tests/fuzz/SealedAliasRecord.h"

#include <cstddef>
#include <cstdint>

namespace {

using namespace veilkeep;

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
    readWriteRead(test::sealedAliasRecord(input));
    return 0;
}
