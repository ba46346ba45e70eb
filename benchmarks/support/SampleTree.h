#pragma once

#include <string>

namespace veilkeep::benchmark {

// Empty files "0.txt", "1.txt"… in each of many directories, which lie in groups of a hundred.
struct SampleTree {
    std::string path;
    int directories;
    int filesInEach;

    std::string directory(int number) const;
};

// Each ends the program, with the reason, where it fails. What is there already stays.
void make(const SampleTree& tree);
void makeDirectory(const std::string& path);
void makeFiles(const std::string& directory, int count);
void makeFile(const std::string& path);
[[noreturn]] void fail(const std::string& what);

} // namespace veilkeep::benchmark
