#pragma once

#include "core/base/UniqueFd.h"

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace veilkeep {

// A descriptor kept open for the directories pending below it; counted, so that a walk leaves most of the
// process's descriptors to others.
class HeldDescriptor {
public:
    HeldDescriptor(UniqueFd fd, std::atomic<int>& count) : m_fd(std::move(fd)), m_count(count) { ++m_count; }
    ~HeldDescriptor() { --m_count; }
    HeldDescriptor(const HeldDescriptor&) = delete;
    HeldDescriptor& operator=(const HeldDescriptor&) = delete;

    int get() const { return m_fd.get(); }

private:
    UniqueFd m_fd;
    std::atomic<int>& m_count;
};

// One directory on the way from the root to what is pending. A path is the chain of its places, so that
// memory grows with the depth and not with its square.
struct WalkPlace {
    WalkPlace(std::shared_ptr<WalkPlace> parent, std::string name);
    ~WalkPlace();

    std::shared_ptr<WalkPlace> parent; // nothing for the root
    std::string name;
    std::weak_ptr<const HeldDescriptor>
        descriptor; // open at most as long as something is pending directly below

    std::string path() const; // relative to the root
};

// A directory's subdirectories that are still to be walked.
struct PendingLevel {
    std::shared_ptr<WalkPlace> place;
    std::shared_ptr<const HeldDescriptor> descriptor; // may be nothing
    std::string names;                                // each ended by a NUL
    std::size_t begin = 0;                            // of the next name
};

struct PendingDirectory {
    std::shared_ptr<WalkPlace> parent;
    std::shared_ptr<const HeldDescriptor> parentDescriptor; // may be nothing
    std::string name;
};

// What a walk's threads still have to do, last in first out: whole levels go in, single directories come out.
class PendingDirectories {
public:
    // Each thread once, before its first next().
    void join();

    void push(PendingLevel level);

    // Says that the thread is done with what it took before. Waits while there is nothing but other threads
    // may still add; answers nothing when the walk is over.
    std::optional<PendingDirectory> next();

    // Ends the walk for all threads.
    void stop();

    bool isEmpty() const;

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<PendingLevel> m_levels;
    unsigned int m_busyThreads = 0;
    unsigned int m_waitingThreads = 0;
    bool m_stopped = false;
};

} // namespace veilkeep
