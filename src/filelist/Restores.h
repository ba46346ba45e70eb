#pragma once

#include "alerts/ProgressController.h"
#include "core/protocol/CloakWorkerComunicator.h"

#include <QObject>
#include <QTimer>

#include <atomic>
#include <list>
#include <string>
#include <thread>

namespace veilkeep {

// Searches for hidden items below directories, each on a thread of its own. Owned by FilesViewController;
// main thread, on which the signal comes too.
class Restores : public QObject {
    Q_OBJECT
public:
    Restores(CloakWorkerComunicator& worker, const ProgressController& progress); // neither is owned
    ~Restores() override;                                                         // ends them

    void start(const std::string& directory);
    void cancel() { m_shouldEnd = true; } // all that run; what was found by then counts
    void progressIsShown();               // where it is cancelled from now on, all that run end
    void end();                           // all, and runs the event loop until they are told
    bool areRunning() const { return !m_threads.empty(); }

signals:
    void ended(const std::string& directory, const veilkeep::RestoreSummary& summary);

private:
    CloakWorkerComunicator& m_worker;
    const ProgressController& m_progress;
    QTimer m_look;                    // at the progress
    std::list<std::thread> m_threads; // whose end was not told yet
    std::atomic<bool> m_shouldEnd = false;
};

} // namespace veilkeep
