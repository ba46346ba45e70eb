// Data files from nowhere: the input as a whole file, and as the payload of one whose digest is right.
#include "core/storage/ArchiveEnvelope.h"
#include "core/storage/RecordArchive.h"
#include "tests/fuzz/Require.h"

#include <cstddef>
#include <cstdint>

namespace {

using namespace veilkeep;

std::string encoded(const RecordArchive& archive) {
    std::vector<const PropertyDictionary*> records;
    for (const PropertyDictionary& record : archive.records)
        records.push_back(&record);
    Result<std::string> bytes = encodeArchive("files", records, archive.unknown);
    test::require(bytes.has_value(), "what was read can be written");
    return std::move(*bytes);
}

void readWriteRead(const std::string& file) {
    const Result<RecordArchive> archive = decodeArchive(file, "files");
    if (!archive)
        return;
    const std::string written = encoded(*archive);
    const Result<RecordArchive> again = decodeArchive(written, "files");
    test::require(again.has_value(), "what was written can be read");
    test::require(again->records.size() == archive->records.size(), "no record is lost");
    test::require(encoded(*again) == written, "writing again gives the same bytes");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    readWriteRead(input);
    ArchiveEnvelopeWriter envelope(RecordArchive::currentVersion, size);
    envelope.text() += input;
    readWriteRead(std::move(envelope).seal());
    return 0;
}
