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
    double limit;
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
        return std::puts("the records do not load"), 2;
    std::optional<FilesController> controller(list);

    bool isFast = true;
    constexpr double noLimit = 1000;
    for (const Letter letter : {Letter{"e", 5}, Letter{"z", 5}, Letter{"ö", noLimit}, Letter{"z", 5, true}}) {
        std::vector<const std::string*> found;
        const benchmark::Side filter = {
            std::string("filter by ") + letter.text + (letter.isFirst ? ", the first letter" : ""),
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
        isFast &= benchmark::sideBySide(filter, plain, letter.limit, 15);
        std::printf("%zu found, %zu by strcasestr\n\n", controller->arrangedObjects().size(), found.size());
        if (controller->arrangedObjects().size() != found.size())
            return 2;
    }
    return isFast ? 0 : 1;
}
