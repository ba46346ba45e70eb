#include "filelist/Restores.h"

#include "filelist/MainThread.h"

namespace veilkeep {

Restores::~Restores() {
    cancel();
    MainThread::runUntil([this] { return m_running == 0; }); // their threads wait for this one
    for (std::thread& thread : m_threads)
        thread.join();
}

void Restores::start(const std::string& directory) {
    if (m_running++ == 0)
        m_shouldEnd = false;
    m_threads.emplace_back([this, directory] {
        const RestoreSummary summary =
            m_worker.restoreFiles(directory, [this] { return m_shouldEnd.load(); });
        MainThread::post(this, [this, directory, summary] {
            --m_running;
            emit ended(directory, summary);
        });
    });
}

} // namespace veilkeep
