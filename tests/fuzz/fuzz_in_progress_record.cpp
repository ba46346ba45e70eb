// In-progress records from nowhere: the input as a file in the folder, as the "Error" of a record, and as the
// paths of a record that a worker writes.
#include "core/base/PathText.h"
#include "core/protocol/InProgressFolder.h"
#include "core/storage/PropertyList.h"
#include "tests/fuzz/Require.h"
#include "tests/fuzz/ScratchFolder.h"

#include <cstddef>
#include <cstdint>
#include <fstream>

namespace {

using namespace veilkeep;

void readWriteRead(const PropertyDictionary& dictionary) {
    const Result<InProgressRecord> record = recordFromDictionary(dictionary);
    if (!record)
        return;
    const Result<PropertyDictionary> written = dictionaryFromRecord(*record);
    test::require(written.has_value(), "what was read can be written");
    const Result<InProgressRecord> again = recordFromDictionary(*written);
    test::require(again && *again == *record, "what was written reads as the same");
}

// The folder's one entry, read and removed.
Result<PropertyDictionary> takeEntry(const InProgressFolder& folder) {
    const auto entries = folder.entries();
    test::require(entries && entries->size() == 1, "the folder has one entry");
    Result<PropertyDictionary> read = folder.read(entries->front());
    test::require(folder.remove(entries->front()).has_value(), "an entry can be removed");
    return read;
}

void readFile(const InProgressFolder& folder, const std::string& content) {
    std::ofstream(joinPath(folder.path(), "entry"), std::ios::binary) << content;
    const Result<PropertyDictionary> read = takeEntry(folder);
    const Result<PropertyDictionary> parsed = parsePropertyList(content);
    test::require(read.has_value() == parsed.has_value(), "a file is read as its content is");
    if (!read)
        return;
    test::require(*read == *parsed, "a file holds what its content does");
    readWriteRead(*read);
}

void writeAndRead(const InProgressFolder& folder, const InProgressRecord& record) {
    test::require(writeRecord(folder.path(), record).has_value(), "a record can be written");
    const Result<PropertyDictionary> read = takeEntry(folder);
    test::require(read.has_value(), "a written record can be read");
    const Result<InProgressRecord> again = recordFromDictionary(*read);
    test::require(again && *again == record, "a record comes back as it was");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::ScratchFolder scratch;
    const InProgressFolder folder(scratch.path());
    const std::string input(reinterpret_cast<const char*>(data), size);
    readFile(folder, input);
    readWriteRead({{"OriginalPath", input},
                   {"CurrentPath", Bytes{input}},
                   {"Error", Bytes{input}},
                   {"Action", std::int64_t{1}}});
    const std::size_t middle = size / 2;
    const int number = static_cast<int>(size) - static_cast<int>(middle % 7);
    writeAndRead(folder, {input.substr(0, middle), input.substr(middle), number, -number});
    return 0;
}
