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
    end();
}

void Restores::end() {
    cancel();
    MainThread::runUntil([this] { return m_threads.empty(); }); // they wait for this one
}

void Restores::progressIsShown() {
    constexpr int interval = 50; // ms
    m_look.start(interval);
}

void Restores::start(const std::string& directory) {
    if (m_threads.empty())
        m_shouldEnd = false;
    const auto thread = m_threads.emplace(m_threads.end());
    *thread = std::thread([this, thread, directory] {
        const RestoreSummary summary =
            m_worker.restoreFiles(directory, [this] { return m_shouldEnd.load(); });
        MainThread::post(this, [this, thread, directory, summary] {
            thread->join();
            m_threads.erase(thread);
            if (m_threads.empty())
                m_look.stop();
            emit ended(directory, summary);
        });
    });
}

} // namespace veilkeep
