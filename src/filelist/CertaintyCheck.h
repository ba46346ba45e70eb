#pragma once

#include "filelist/FileList.h"

#include <QObject>

#include <cstddef>
#include <thread>
#include <vector>

namespace veilkeep {

// Finds out which records' items are certainly where they should be, on a thread of its own, which works on
// copies of a part of the list at a time. Owned by FilesViewController; main thread, on which the signals
// come too.
class CertaintyCheck : public QObject {
    Q_OBJECT
public:
    using Files = std::vector<ListedFile>;

    void check(const Files& files); // what is checked already is given up

signals:
    void uncertainFound(const std::vector<veilkeep::ListedFile>& files); // to be looked at closely
    void finished();

private:
    void startPart();
    void take(unsigned int run, const std::vector<char>& areCertain);

    Files m_files;
    std::size_t m_next = 0; // the first of the part that is checked
    unsigned int m_run = 0;
    std::jthread m_thread; // goes first, and is waited for
};

} // namespace veilkeep
