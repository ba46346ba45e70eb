#include "benchmarks/support/SampleTree.h"

#include "core/base/PathText.h"
#include "core/base/UniqueFd.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace veilkeep::benchmark {

std::string SampleTree::directory(int number) const {
    return joinPath(joinPath(path, std::to_string(number / 100)), std::to_string(number));
}

void make(const SampleTree& tree) {
    makeDirectory(tree.path);
    for (int number = 0; number < tree.directories; ++number) {
        const std::string directory = tree.directory(number);
        makeDirectory(std::string(parentPath(directory)));
        makeDirectory(directory);
        makeFiles(directory, tree.filesInEach);
    }
}

void makeDirectory(const std::string& path) {
    if (::mkdir(path.c_str(), 0755) != 0 && errno != EEXIST)
        fail(path);
}

void makeFiles(const std::string& directory, int count) {
    for (int file = 0; file < count; ++file)
        makeFile(joinPath(directory, std::to_string(file) + ".txt"));
}

void makeFile(const std::string& path) {
    if (!UniqueFd(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644)))
        fail(path);
}

void fail(const std::string& what) {
    std::perror(what.c_str());
    std::exit(2);
}

} // namespace veilkeep::benchmark
