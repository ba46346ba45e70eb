#include "filelist/Restores.h"

#include "filelist/MainThread.h"

namespace veilkeep {

Restores::Restores(CloakWorkerComunicator& worker, const ProgressController& progress)
    : m_worker(worker), m_progress(progress) {
    connect(&m_look, &QTimer::timeout, this, [this] {
        if (m_progress.isCancelled())
            cancel();
    });
}

Restores::~Restores() {
    cancel();
    MainThread::runUntil([this] { return m_running == 0; }); // their threads wait for this one
    for (std::thread& thread : m_threads)
        thread.join();
}

void Restores::progressIsShown() {
    constexpr int interval = 50; // ms
    m_look.start(interval);
}

void Restores::start(const std::string& directory) {
    if (m_running++ == 0)
        m_shouldEnd = false;
    m_threads.emplace_back([this, directory] {
        const RestoreSummary summary =
            m_worker.restoreFiles(directory, [this] { return m_shouldEnd.load(); });
        MainThread::post(this, [this, directory, summary] {
            if (--m_running == 0)
                m_look.stop();
            emit ended(directory, summary);
        });
    });
}

} // namespace veilkeep
