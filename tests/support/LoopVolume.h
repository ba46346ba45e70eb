#pragma once

#include "tests/support/ScratchTree.h"

#include <string>

namespace veilkeep::test {

struct LoopVolumeOptions {
    std::string name = {};          // of image and mount point; the type where empty
    std::string formatOptions = {}; // for mkfs
    int megabytes = 320;            // the least that all types take; sparse
};

// A file system in an image file of the scratch tree, mounted in private mounts. Where the machine does not
// allow it, whyMissing() tells the reason to skip the test with. Nothing reaches the image of an ext4 or xfs
// volume within half a minute unless it is synced. The operations throw when they fail.
class LoopVolume {
public:
    LoopVolume(const ScratchTree& tree, const std::string& fileSystemType,
               const LoopVolumeOptions& options = {});
    ~LoopVolume();
    LoopVolume(const LoopVolume&) = delete;
    LoopVolume& operator=(const LoopVolume&) = delete;

    const std::string& whyMissing() const { return m_whyMissing; }
    const std::string& mountPoint() const { return m_mountPoint; }
    std::string path(const std::string& relative) const { return m_mountPoint + "/" + relative; }

    void unmount();
    void mountAt(const std::string& mountPoint, const std::string& options = {}); // after an unmount()

    void sync() const; // this volume alone

    // Copies the image as the file system has written it up to now: what a power cut would leave.
    void copyImage(const std::string& path) const;

    // Mounts an image that is none of this object's, in the private mounts.
    static void mountImage(const std::string& type, const std::string& image, const std::string& mountPoint,
                           const std::string& options = {});

private:
    std::string m_type;
    std::string m_image;
    std::string m_mountPoint;
    std::string m_whyMissing;
    bool m_isMounted = false;
};

} // namespace veilkeep::test
