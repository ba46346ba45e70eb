#pragma once

#include "core/base/Result.h"
#include "core/records/PropertyDictionary.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// The content of a data file: one property dictionary for each item or group, and what else a later version
// put beside them. In the file's envelope (ArchiveEnvelope.h) it is the CBOR map
//     {recordsKey: [{"properties": {key: value…}}, …], unknown keys…}
// where recordsKey is "files" or "groups". Values are text, byte strings, integers, booleans, 64-bit reals,
// null, lists and maps; text that is not well-formed UTF-8 is stored as a byte string and comes back as one.
// CBOR does not tell a signed from an unsigned number: what fits std::int64_t comes back as that.
struct RecordArchive {
    static constexpr std::uint64_t currentVersion = 1;

    // Bounds that hold memory down to a small multiple of a hostile file. Records keep far below them.
    static constexpr std::size_t maximumKeys = 65'536;         // different ones
    static constexpr std::size_t maximumNestedValues = 65'536; // in lists and maps below a record's values

    std::uint64_t version = currentVersion; // a later one was read all the same, but must not be written over
    std::vector<PropertyDictionary> records;
    std::vector<PropertyDictionary::Entry> unknown;
};

// Damaged for bytes that no version can have written, NewerVersion for what only a later one can read. The
// bytes are taken over: the records' texts stay where they lie in them.
Result<RecordArchive> decodeArchive(std::string bytes, std::string_view recordsKey);

// In the current version. InvalidArgument for what decodeArchive would not read back: nesting below
// maximumValueNesting, a bound of RecordArchive passed, or an unknown key that is there twice.
Result<std::string> encodeArchive(std::string_view recordsKey,
                                  std::span<const PropertyDictionary* const> records,
                                  std::span<const PropertyDictionary::Entry> unknown = {});

} // namespace veilkeep
