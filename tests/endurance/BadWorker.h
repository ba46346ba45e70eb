#pragma once

#include "tests/support/ScratchTree.h"

#include <cstddef>
#include <string>

namespace veilkeep::test {

// The path of a worker that is the real one, and for a while one that meets with an accident.
class BadWorker {
public:
    BadWorker(const ScratchTree& tree, std::string real);

    const std::string& path() const { return m_path; }

    static std::size_t kinds();
    std::string goBad(std::size_t kind); // what befalls it, in words
    void goWell();

private:
    std::string m_path;
    std::string m_real;
    const ScratchTree& m_tree;
};

} // namespace veilkeep::test
