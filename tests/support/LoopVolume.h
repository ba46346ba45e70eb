#pragma once

#include "tests/support/ScratchTree.h"

#include <string>

namespace veilkeep::test {

// A new file system in an image file of the scratch tree, mounted in private mounts. Where the machine does
// not allow it, whyMissing() tells the reason to skip the test with.
class LoopVolume {
public:
    LoopVolume(const ScratchTree& tree, const std::string& fileSystemType);
    ~LoopVolume();
    LoopVolume(const LoopVolume&) = delete;
    LoopVolume& operator=(const LoopVolume&) = delete;

    const std::string& whyMissing() const { return m_whyMissing; }
    const std::string& mountPoint() const { return m_mountPoint; }
    std::string path(const std::string& relative) const { return m_mountPoint + "/" + relative; }

    void mountAgain(); // at the same place; throws when that fails

private:
    std::string mount() const; // why it failed

    std::string m_type;
    std::string m_image;
    std::string m_mountPoint;
    std::string m_whyMissing;
};

} // namespace veilkeep::test
