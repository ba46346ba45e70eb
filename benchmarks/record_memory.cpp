// Heap in use by the File records of a long list once it is loaded, the file's bytes that they keep included.
#include "benchmarks/support/Report.h"
#include "benchmarks/support/SampleRecords.h"
#include "core/records/File.h"
#include "core/storage/RecordArchive.h"

#include <malloc.h>

#include <cstdio>
#include <utility>
#include <vector>

namespace {

double heapInUse() { // in MB, 10^6 bytes
    const struct mallinfo2 heap = ::mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd) / 1e6;
}

} // namespace

int main() {
    using namespace veilkeep;
    constexpr std::size_t count = 100'000;
    const std::string archive = benchmark::sampleArchive(benchmark::sampleRecords(count));
    const double before = heapInUse();
    std::vector<File> files;
    files.reserve(count);
    {
        Result<RecordArchive> decoded = decodeArchive(std::string(archive), "files"); // a copy, as just read
        if (!decoded || decoded->records.size() != count) {
            std::fputs("the archive does not decode\n", stderr);
            return 2;
        }
        for (PropertyDictionary& record : decoded->records)
            files.emplace_back(std::move(record));
    }
    const double used = heapInUse() - before;
    benchmark::Report report;
    report.tell("100,000 records", used, "heap in use by File records");
    return report.exitStatus();
}
