#pragma once

#include "core/base/Result.h"

#include <QObject>

#include <string>
#include <vector>

namespace veilkeep {

// One name in a folder, as the system gives it.
struct FolderEntry {
    std::string name;
    bool isFolder = false; // or a link to one

    bool isHidden() const { return name.starts_with('.'); }
    bool operator==(const FolderEntry&) const = default;
};

// Folders first, each kind as the user's language sorts names and numbers. Any thread.
Result<std::vector<FolderEntry>> contentsOfFolder(const std::string& path);

// Reads folders on threads of its own; where several are asked for, the last one counts. Main thread.
class FolderReader : public QObject {
    Q_OBJECT

public:
    using Contents = Result<std::vector<FolderEntry>>;

    void read(const std::string& path);

signals:
    void done(const std::string& path, const veilkeep::FolderReader::Contents& contents);

private:
    int m_asked = 0;
};

} // namespace veilkeep
