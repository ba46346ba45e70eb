#include "filelist/AddBatches.h"

#include "core/filesystem/ItemAtPath.h"
#include "core/names/BaseCloakLogic.h"
#include "filelist/MainThread.h"

#include <cerrno>
#include <chrono>
#include <utility>

namespace veilkeep {
namespace {

// Records are handed over in parts, so that the first ones appear at once and the main thread is never long
// at it.
class Part {
public:
    explicit Part(std::function<void(std::vector<File>)> take) : m_take(std::move(take)) {}

    void add(File file) {
        m_files.push_back(std::move(file));
        if (m_files.size() == most || std::chrono::steady_clock::now() >= m_due)
            handOver();
    }
    void handOver() {
        if (!m_files.empty())
            MainThread::runAndWait([&] { m_take(std::exchange(m_files, {})); });
        m_due = std::chrono::steady_clock::now() + std::chrono::milliseconds(100);
    }

private:
    static constexpr std::size_t most = 4096;

    const std::function<void(std::vector<File>)> m_take;
    std::vector<File> m_files;
    std::chrono::steady_clock::time_point m_due; // the first one is due at once
};

} // namespace

AddBatches::AddBatches(Steps steps) : m_steps(std::move(steps)) {}

AddBatches::~AddBatches() {
    if (!m_thread.joinable())
        return;
    {
        const std::lock_guard lock(m_mutex);
        m_isStopped = true;
        m_waiting.clear();
    }
    m_wakeUp.notify_one();
    MainThread::runUntil([this] { return m_hasEnded; }); // it may wait for this thread
    m_thread.join();
}

void AddBatches::add(std::vector<std::string> paths, std::int64_t toGroup) {
    ++m_unfinished;
    {
        const std::lock_guard lock(m_mutex);
        m_waiting.push_back({std::move(paths), toGroup});
    }
    m_wakeUp.notify_one();
    if (!m_thread.joinable())
        m_thread = std::thread([this] { run(); });
}

void AddBatches::run() {
    for (;;) {
        std::unique_lock lock(m_mutex);
        m_wakeUp.wait(lock, [this] { return m_isStopped || !m_waiting.empty(); });
        if (m_isStopped)
            break;
        const Batch batch = std::move(m_waiting.front());
        m_waiting.pop_front();
        lock.unlock();
        runBatch(batch);
    }
    MainThread::runAndWait([this] { m_hasEnded = true; });
}

void AddBatches::runBatch(const Batch& batch) {
    std::vector<Error> missing;
    Part part([this](std::vector<File> files) {
        if (!isStopped())
            m_steps.take(std::move(files));
    });
    for (const std::string& path : batch.paths) {
        if (isStopped())
            return;
        if (BaseCloakLogic::isProtectedFileAtPath(path)) {
            part.handOver();
            m_steps.refuseProtected(path);
        } else if (!openItemAt(path)) {
            missing.push_back(Error::system("lstat", path, errno));
        } else {
            File file = File::initWithPath(path);
            file.moveToGroup(batch.groupID);
            part.add(std::move(file));
        }
    }
    part.handOver();
    MainThread::runAndWait([&] {
        if (!isStopped())
            m_steps.finish(std::move(missing));
        --m_unfinished;
    });
}

bool AddBatches::isStopped() {
    const std::lock_guard lock(m_mutex);
    return m_isStopped;
}

} // namespace veilkeep
