#pragma once

#include "core/base/UniqueFd.h"
#include "widgets/preview/WorkStop.h"

#include <sys/stat.h>

#include <string>

#include <QFile>

namespace veilkeep {

// What lies at a path, links followed, looked at without ever waiting for a pipe or a device: only a regular
// file is opened. Any thread but the interface's.
class OpenedItem {
public:
    enum class Kind {
        Missing,
        Folder,
        RegularFile,
        Unreadable, // a regular file that may not be opened
        Other,      // a pipe, a device, a socket, a link that leads nowhere
    };

    explicit OpenedItem(const std::string& path);

    Kind kind() const { return m_kind; }
    const struct stat& status() const { return m_status; } // of what is there; zeros for Missing

    int descriptor() const { return m_file.get(); } // of a regular file, else -1

private:
    Kind m_kind = Kind::Missing;
    struct stat m_status = {};
    UniqueFd m_file;
};

// Reads an open file until somebody stops it; then reading fails, which ends a decoder soon. The descriptor
// stays the caller's.
class StoppableFile : public QFile {
public:
    StoppableFile(int descriptor, const WorkStop& stop);

protected:
    qint64 readData(char* data, qint64 size) override {
        return m_stop.isStopped() ? -1 : QFile::readData(data, size);
    }

private:
    const WorkStop& m_stop;
};

} // namespace veilkeep
