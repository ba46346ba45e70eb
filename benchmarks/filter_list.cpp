// Filtering a long list by a typed letter against strcasestr over the same names as plain strings.
#include "benchmarks/support/SampleRecords.h"
#include "benchmarks/support/SideBySide.h"
#include "core/storage/RecordArchive.h"
#include "filelist/FilesController.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace veilkeep;

constexpr std::size_t count = 100'000;

// "z" is in one name of a hundred, "ö" in one of twenty-five, "e" in nearly all.
std::string nameOf(std::size_t index) {
    constexpr std::array<const char*, 4> words = {"Letter to the Office", "IMG", "Report", "Meeting Minutes"};
    std::string name = words[index % words.size()] + (" " + std::to_string(1'000'000 + index));
    if (index % 100 == 7)
        name += " Zurich";
    if (index % 25 == 3)
        name += " Köln";
    return name + (index % 2 == 0 ? ".jpeg" : ".pdf");
}

// As the list is after loading.
std::vector<File> loadedFiles() {
    auto records = benchmark::sampleRecords(count);
    for (std::size_t index = 0; index < count; ++index)
        records[index].set("Name", Bytes{nameOf(index)});
    auto archive = decodeArchive(benchmark::sampleArchive(records), "files");
    std::vector<File> files;
    if (archive)
        for (PropertyDictionary& record : archive->records)
            files.emplace_back(std::move(record));
    return files;
}

struct Letter {
    const char* text;
    const char* figure;
    bool isFirst = false; // typed since the list changed
};

} // namespace

int main() {
    FileList list;
    list.assign(loadedFiles());
    std::vector<std::string> names;
    for (const ListedFile& file : list.all())
        names.emplace_back(file->name());
    if (names.size() != count)
        return std::fputs("the records do not load\n", stderr), 2;
    std::optional<FilesController> controller(list);

    benchmark::Report report;
    for (const Letter letter :
         {Letter{"e", "filter by e"}, Letter{"z", "filter by z"}, Letter{"ö", "filter by ö"},
          Letter{"z", "filter by z, the first letter", true}}) {
        std::vector<const std::string*> found;
        const benchmark::Side filter = {
            letter.figure,
            [&] { controller->arrangedObjects(); },
            [&] {
                if (letter.isFirst)
                    return controller.emplace(list).setFilterPredicate({{}, {}, letter.text});
                controller->setFilterPredicate({{}, {}, "x"});
                controller->arrangedObjects();
                controller->setFilterPredicate({{}, {}, letter.text});
            },
        };
        const benchmark::Side plain = {
            std::string("strcasestr ") + letter.text,
            [&] {
                found.clear();
                for (const std::string& name : names)
                    if (::strcasestr(name.c_str(), letter.text))
                        found.push_back(&name);
            },
        };
        benchmark::sideBySide(report, filter, plain, 15);
        std::printf("%zu found, %zu by strcasestr\n\n", controller->arrangedObjects().size(), found.size());
        if (controller->arrangedObjects().size() != found.size())
            return std::fprintf(stderr, "%s: not what strcasestr finds\n", letter.figure), 2;
    }
    return report.exitStatus();
}
