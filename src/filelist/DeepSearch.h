#pragma once

#include "filelist/FileList.h"

#include <QObject>

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

namespace veilkeep {

// Looks for records' items wherever they may be, on a thread of its own, with one walk of each volume for all
// that are asked for at a time. Nothing is mounted. Made anew for each purpose; main thread, on which the
// signals come too.
class DeepSearch : public QObject {
    Q_OBJECT
public:
    enum class Outcome { Found, Missing, VolumeAbsent };

    DeepSearch();
    ~DeepSearch() override; // cancels, and waits for the thread

    void search(const std::vector<ListedFile>& files); // what comes while one runs is searched after it
    bool isRunning() const { return m_run != nullptr; }
    bool isLookingFor(const ListedFile& file) const { return m_open.contains(file.get()); }
    void cancel(); // also what waits; ends without outcomes
    std::uint64_t directoriesSeen() const;

signals:
    // Once for each record, unless cancelled; the path of a found one. The record is as it was.
    void ended(const veilkeep::ListedFile& file, veilkeep::DeepSearch::Outcome outcome,
               const std::string& path);
    void finished(); // nothing runs or waits any more

private:
    struct Run;

    void startNext();
    void tell(std::size_t number, Outcome outcome, const std::string& path);
    void runEnded();

    std::unique_ptr<Run> m_run;
    std::vector<ListedFile> m_waiting;
    std::unordered_set<const File*> m_open; // not told yet
};

} // namespace veilkeep
