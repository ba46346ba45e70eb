#include "benchmarks/support/SampleRecords.h"

#include "core/base/PathText.h"
#include "core/records/File.h"
#include "core/storage/RecordArchive.h"

#include <cstdio>
#include <cstdlib>

namespace veilkeep::benchmark {
namespace {

PropertyDictionary sampleRecord(std::size_t index) {
    constexpr std::size_t pathSize = 80, aliasSize = 200;
    const std::string name = "Report " + std::to_string(1'000'000 + index) + ".pdf";
    const auto pathIn = [&](std::string directory) {
        directory.resize(pathSize - name.size() - 1, 'x');
        return Bytes{directory + "/" + name};
    };
    const std::string alias(aliasSize, static_cast<char>(index));
    return {
        {"GroupID", std::int64_t{3}},
        {"Name", Bytes{name}},
        {"Path", pathIn("/home/somebody/Documents/.SYS_INDEX/")},
        {"Size", std::uint64_t{4096} * index},
        {"OriginalPath", pathIn("/home/somebody/Documents/")},
        {"State", std::int64_t{1}},
        {"IsFile", true},
        {"Alias", Bytes{alias}},
    };
}

} // namespace

std::vector<PropertyDictionary> sampleRecords(std::size_t count) {
    std::vector<PropertyDictionary> records;
    records.reserve(count);
    for (std::size_t index = 0; index < count; ++index)
        records.push_back(sampleRecord(index));
    return records;
}

std::vector<PropertyDictionary> recordsOf(const SampleTree& tree) {
    std::vector<PropertyDictionary> records;
    for (int number = 0; number < tree.directories; ++number)
        for (int file = 0; file < tree.filesInEach; ++file)
            records.push_back(
                File::fileWithPath(joinPath(tree.directory(number), std::to_string(file) + ".txt"))
                    .properties());
    return records;
}

std::string sampleArchive(const std::vector<PropertyDictionary>& records) {
    std::vector<const PropertyDictionary*> pointers;
    pointers.reserve(records.size());
    for (const PropertyDictionary& record : records)
        pointers.push_back(&record);
    Result<std::string> archive = encodeArchive("files", pointers);
    if (!archive) {
        std::fputs("the records cannot be encoded\n", stderr);
        std::abort();
    }
    return std::move(*archive);
}

} // namespace veilkeep::benchmark
