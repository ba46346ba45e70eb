#include "widgets/preview/WorkQueue.h"

#include "filelist/MainThread.h"

#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <exception>
#include <mutex>
#include <utility>

#include <QCoreApplication>
#include <QThreadPool>

namespace veilkeep {
namespace {

constexpr std::chrono::milliseconds idleThreadLife = std::chrono::seconds(5);
constexpr std::chrono::milliseconds patienceAtTheEnd{300};
constexpr int niceness = 10;

// The end of a process takes away what its libraries hold, plugins of images among them, while work that was
// left behind may be using it. So nothing is taken away any more.
void endAtOnce(int status, void*) {
    std::fflush(nullptr);
    ::_exit(status);
}

} // namespace

class WorkQueue::Shared {
public:
    explicit Shared(int threads) {
        pool.setMaxThreadCount(threads);
        pool.setExpiryTimeout(static_cast<int>(idleThreadLife.count()));
    }

    void runNewest() {
        ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), niceness); // of this thread alone
        if (const Work work = takeNewest(); work.run)
            work.run(stop);
    }

    Work takeNewest() {
        const std::lock_guard lock(mutex);
        if (waiting.empty())
            return {};
        Work work = std::move(waiting.back());
        waiting.pop_back();
        return work;
    }

    QThreadPool pool;
    WorkStop stop;
    std::mutex mutex;
    std::deque<Work> waiting; // the newest at its end
};

WorkQueue::WorkQueue(int threads, std::size_t mostWaiting) : m_threads(threads), m_mostWaiting(mostWaiting) {}

WorkQueue::~WorkQueue() {
    if (!m_shared)
        return;
    dropWaiting();
    m_shared->stop.stop();
    m_shared->pool.clear();
    if (m_shared->pool.waitForDone(static_cast<int>(patienceAtTheEnd.count())))
        return;
    m_shared.release(); // its end would wait: it stays
    ::on_exit(endAtOnce, nullptr);
}

void WorkQueue::add(Work work) {
    if (!m_shared)
        m_shared = std::make_unique<Shared>(m_threads);
    std::function<void()> givenUp;
    {
        const std::lock_guard lock(m_shared->mutex);
        m_shared->waiting.push_back(std::move(work));
        if (m_shared->waiting.size() > m_mostWaiting) {
            givenUp = std::move(m_shared->waiting.front().givenUp);
            m_shared->waiting.pop_front();
        }
    }
    if (givenUp)
        givenUp();
    m_shared->pool.start([shared = m_shared.get()] {
        try {
            shared->runNewest();
        } catch (...) { // as uncaught as on the main thread, where it is reported
            MainThread::post(qApp, [thrown = std::current_exception()] { std::rethrow_exception(thrown); });
        }
    });
}

void WorkQueue::dropWaiting() {
    if (!m_shared)
        return;
    const std::lock_guard lock(m_shared->mutex);
    m_shared->waiting.clear();
}

} // namespace veilkeep
