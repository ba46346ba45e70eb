// Compares the search for hidden items with "find DIR -name .SYS_INDEX" over 10,000 directories of 50 files,
// whole process against whole process. "--large" instead reports time and greatest memory over 100,000
// directories of 10 files. The trees are made once, beside the program.

#include "benchmarks/support/SideBySide.h"
#include "core/base/PathText.h"
#include "core/base/UniqueFd.h"
#include "core/filesystem/HiddenItemScan.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

using namespace veilkeep;

namespace {

constexpr int indexes = 50;

struct Tree {
    std::string path;
    int directories;
    int filesInEach;
};

[[noreturn]] void fail(const std::string& what) {
    std::perror(what.c_str());
    std::exit(2);
}

void makeDirectory(const std::string& path) {
    if (::mkdir(path.c_str(), 0755) != 0 && errno != EEXIST)
        fail(path);
}

void makeFiles(const std::string& directory, int count) {
    for (int file = 0; file < count; ++file)
        if (!UniqueFd(::open(joinPath(directory, std::to_string(file) + ".txt").c_str(),
                             O_WRONLY | O_CREAT | O_CLOEXEC, 0644)))
            fail(directory);
}

// Directories in groups of a hundred; one in so many holds a hidden item. Finished trees carry a mark beside
// them.
void makeTree(const Tree& tree) {
    const std::string mark = tree.path + ".made";
    if (::access(mark.c_str(), F_OK) == 0)
        return;
    makeDirectory(tree.path);
    for (int number = 0; number < tree.directories; ++number) {
        const std::string group = joinPath(tree.path, std::to_string(number / 100));
        const std::string directory = joinPath(group, std::to_string(number));
        makeDirectory(group);
        makeDirectory(directory);
        makeFiles(directory, tree.filesInEach);
        if (number % (tree.directories / indexes) == 0) {
            makeDirectory(joinPath(directory, ".SYS_INDEX"));
            makeFiles(joinPath(directory, ".SYS_INDEX"), 1);
        }
    }
    if (!UniqueFd(::open(mark.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644)))
        fail(mark);
}

rusage runQuietly(std::vector<std::string> arguments) {
    std::vector<char*> argv;
    for (std::string& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    if ((errno = ::posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ)) != 0)
        fail(arguments[0]);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage = {};
    if (::wait4(child, &status, 0, &usage) < 0 || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        fail(arguments[0] + " did not end well");
    return usage;
}

// Exit status 0 where each hidden item was found.
int scan(const std::string& directory) {
    std::uint64_t printed = 0;
    HiddenItemScan search;
    const auto summary = search.scan(directory, [&](const std::string& path) {
        std::puts(path.c_str());
        ++printed;
    });
    return summary && summary->found == indexes && printed == indexes && summary->unreadable == 0 ? 0 : 1;
}

int reportLarge(const std::string& self, const Tree& tree) {
    makeTree(tree);
    runQuietly({self, "--scan", tree.path});
    const auto begin = std::chrono::steady_clock::now();
    const rusage usage = runQuietly({self, "--scan", tree.path});
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
    std::printf("%d directories, %d files: %.2f s, at most %.1f MB of memory\n", tree.directories,
                tree.directories * tree.filesInEach, time.count(),
                static_cast<double>(usage.ru_maxrss) / 1024);
    return usage.ru_maxrss < 200L * 1024 && time.count() < 60 ? 0 : 1;
}

std::string ownPath() {
    char path[PATH_MAX] = {};
    if (::readlink("/proc/self/exe", path, sizeof path - 1) < 0)
        fail("/proc/self/exe");
    return path;
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 3 && std::strcmp(argv[1], "--scan") == 0)
        return scan(argv[2]);
    const std::string self = ownPath();
    if (argc == 2 && std::strcmp(argv[1], "--large") == 0)
        return reportLarge(self, {self + ".large", 100'000, 10});
    const Tree tree{self + ".tree", 10'000, 50};
    makeTree(tree);
    const bool isFast = benchmark::sideBySide({"search for hidden items",
                                               [&] {
                                                   runQuietly({self, "--scan", tree.path});
                                               }},
                                              {"find -name .SYS_INDEX",
                                               [&] {
                                                   runQuietly({"find", tree.path, "-name", ".SYS_INDEX"});
                                               }},
                                              0.5, 15);
    return isFast ? 0 : 1;
}
