#pragma once

#include "tests/fuzz/Require.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace veilkeep::test {

// Removed at the end of the program.
class ScratchFolder {
public:
    ScratchFolder() : m_path(std::filesystem::temp_directory_path() / "veilkeep-fuzz-XXXXXX") {
        require(::mkdtemp(m_path.data()) != nullptr, "there is a place for the folder");
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

} // namespace veilkeep::test
