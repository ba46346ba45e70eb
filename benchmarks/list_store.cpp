// The item list of 100,000 records: loading it against reading and hashing the same bytes, saving it against
// writing and syncing them, and adding 100,000 paths against ten times adding 10,000. Works in a directory
// made in the working directory.
#include "benchmarks/support/SampleRecords.h"
#include "benchmarks/support/SampleTree.h"
#include "benchmarks/support/SideBySide.h"
#include "benchmarks/support/StoredList.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/storage/ReplaceFile.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace {

using namespace veilkeep;
using benchmark::Report;
using List = benchmark::StoredList;

template <class Value>
Value valueOf(Result<Value> result) {
    if (result)
        return std::move(*result);
    benchmark::fail(result.error().path);
}

void check(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "%s\n", what);
    std::exit(2);
}

void measureLoading(Report& report, const std::string& path, std::size_t count) {
    std::unique_ptr<List> list;
    volatile std::uint64_t digest = 0;
    const benchmark::Side load = {"load the list", [&] { list->controller.loadDataFromDisk(); },
                                  [&] {
                                      list.reset();
                                      list = std::make_unique<List>(path);
                                  }};
    const benchmark::Side read = {"read and hash the same bytes", [&] {
                                      const std::string bytes = valueOf(readWholeFile(path, SIZE_MAX));
                                      digest = XXH3_128bits(bytes.data(), bytes.size()).low64;
                                  }};
    benchmark::sideBySide(report, load, read);
    check(list->controller.files().size() == count, "not everything was loaded");
}

void measureSaving(Report& report, const std::string& path) {
    List list(path);
    list.controller.loadDataFromDisk();
    FileList& files = list.controller.files();
    const std::string bytes = valueOf(readWholeFile(path, SIZE_MAX)), other = path + ".plain";
    std::uint64_t size = 0;
    const benchmark::Side save = {
        "save the list",
        [&] { check(list.controller.saveDataToDisk(), "the list was not saved"); },
        [&] { files.change(files.all().front(), [&](File& file) { file.setSize(++size); }); },
    };
    const benchmark::Side write = {"write and sync the same bytes", [&] {
                                       check(replaceFile(other, bytes).has_value(), "nothing was written");
                                   }};
    benchmark::sideBySide(report, save, write);
}

void measureAdding(Report& report, const std::string& directory) {
    constexpr int few = 10'000, parts = 10;
    const benchmark::SampleTree tree{directory, few * parts / 100, 100};
    benchmark::make(tree);
    std::vector<std::string> paths;
    for (int number = 0; number < tree.directories; ++number)
        for (int file = 0; file < tree.filesInEach; ++file)
            paths.push_back(tree.directory(number) + "/" + std::to_string(file) + ".txt");
    std::unique_ptr<List> list;
    const auto begin = [&] {
        list.reset();
        list = std::make_unique<List>(directory + "/list");
    };
    const auto add = [&](std::size_t first, std::size_t count) {
        const auto from = paths.begin() + static_cast<std::ptrdiff_t>(first);
        list->controller.addFiles({from, from + static_cast<std::ptrdiff_t>(count)});
        list->controller.waitForAdding();
        check(list->controller.files().size() == count, "not everything was added");
    };
    const benchmark::Side all = {"add 100,000 paths", [&] { add(0, paths.size()); }, begin};
    const benchmark::Side tenth = {"ten times add 10,000 paths", [&] {
                                       for (std::size_t part = 0; part < parts; ++part) {
                                           begin();
                                           add(part * few, few);
                                       }
                                   }};
    benchmark::sideBySide(report, all, tenth, 3);
}

} // namespace

int main(int count, char** arguments) {
    const QCoreApplication application(count, arguments);
    const std::string directory = std::filesystem::absolute("list_store.tmp").native();
    std::filesystem::remove_all(directory);
    benchmark::makeDirectory(directory);
    const auto records = benchmark::sampleRecords(100'000);
    const std::string path = directory + "/FilesInfo.Veilkeep";
    check(replaceFile(path, benchmark::sampleArchive(records)).has_value(), "no list was written");
    Report report;
    measureLoading(report, path, records.size());
    measureSaving(report, path);
    measureAdding(report, directory + "/items");
    std::filesystem::remove_all(directory);
    return report.exitStatus();
}
