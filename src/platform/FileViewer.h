#pragma once

#include <string>

namespace veilkeep {

// The desktop's file manager.
class FileViewer {
public:
    virtual ~FileViewer() = default;

    virtual void selectFile(const std::string& path) = 0; // opens its folder with the item selected

protected:
    FileViewer() = default;
    FileViewer(const FileViewer&) = default;
    FileViewer& operator=(const FileViewer&) = default;
};

} // namespace veilkeep
