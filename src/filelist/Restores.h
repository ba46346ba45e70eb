#pragma once

#include "core/protocol/CloakWorkerComunicator.h"

#include <QObject>

#include <atomic>
#include <cstddef>
#include <list>
#include <string>
#include <thread>

namespace veilkeep {

// Searches for hidden items below directories, each on a thread of its own. Owned by FilesViewController;
// main thread, on which the signal comes too.
class Restores : public QObject {
    Q_OBJECT
public:
    explicit Restores(CloakWorkerComunicator& worker) : m_worker(worker) {} // not owned
    ~Restores() override;                                                   // ends them

    void start(const std::string& directory);
    void cancel() { m_shouldEnd = true; } // all that run; what was found by then counts
    bool areRunning() const { return m_running > 0; }

signals:
    void ended(const std::string& directory, const veilkeep::RestoreSummary& summary);

private:
    CloakWorkerComunicator& m_worker;
    std::list<std::thread> m_threads;
    std::size_t m_running = 0;
    std::atomic<bool> m_shouldEnd = false;
};

} // namespace veilkeep
