#pragma once

#include "widgets/preview/WorkStop.h"

#include <cstddef>
#include <functional>
#include <memory>

namespace veilkeep {

// Work that waits for one of few threads, the newest first; of more than a bound the oldest is given up.
// There is no thread before the first work and none a little after the last. Used on one thread, on which it
// ends.
class WorkQueue {
public:
    struct Work {
        std::function<void(const WorkStop& stop)> run; // on another thread
        std::function<void()> givenUp = {};            // on the caller's, within add()
    };

    explicit WorkQueue(int threads, std::size_t mostWaiting = 256);

    // What waits is dropped, what runs is told to stop. It is waited for, but not for long: work that does
    // not stop goes on behind, and the process then ends without destroying what is static.
    ~WorkQueue();
    WorkQueue(const WorkQueue&) = delete;
    WorkQueue& operator=(const WorkQueue&) = delete;

    void add(Work work);
    void dropWaiting(); // without telling

private:
    class Shared;
    const int m_threads;
    const std::size_t m_mostWaiting;
    std::unique_ptr<Shared> m_shared;
};

} // namespace veilkeep
