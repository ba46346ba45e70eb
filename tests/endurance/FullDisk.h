#pragma once

#include <string>

namespace veilkeep::test {

// Leaves no room on the file system of a directory, as long as this lives.
class FullDisk {
public:
    explicit FullDisk(const std::string& directory);
    ~FullDisk();
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    std::string m_filler;
};

} // namespace veilkeep::test
