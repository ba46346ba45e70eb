#pragma once

#include "core/base/Error.h"
#include "core/records/File.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace veilkeep {

// Makes records of dropped paths, batch after batch, on one thread of its own, so that the interface stays
// alive meanwhile. Owned by FilesViewController; everything but the steps that say so on the main thread.
class AddBatches {
public:
    struct Steps {
        std::function<void(const std::string&)>
            refuseProtected;                            // on the own thread; returns once it was told
        std::function<void(std::vector<File>)> take;    // a part of a batch, in its order
        std::function<void(std::vector<Error>)> finish; // with what of the batch was not to be found
    };

    explicit AddBatches(Steps steps);
    // What was not taken yet is given up. Runs the event loop until the thread has come to its end.
    ~AddBatches();
    AddBatches(const AddBatches&) = delete;
    AddBatches& operator=(const AddBatches&) = delete;

    void add(std::vector<std::string> paths, std::int64_t toGroup);
    bool isAdding() const { return m_unfinished > 0; }

private:
    struct Batch {
        std::vector<std::string> paths;
        std::int64_t groupID;
    };

    void run();
    void runBatch(const Batch& batch);
    bool isStopped();

    const Steps m_steps;
    std::size_t m_unfinished = 0; // batches, whether they wait or run
    bool m_hasEnded = false;

    std::mutex m_mutex; // the next three
    std::condition_variable m_wakeUp;
    std::deque<Batch> m_waiting;
    bool m_isStopped = false;

    std::thread m_thread; // started with the first batch
};

} // namespace veilkeep
