#pragma once

#include "core/base/Result.h"

#include <dirent.h>
#include <sys/types.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>

namespace veilkeep {

struct DirectoryEntry {
    std::string_view name; // valid until the next entry is asked for
    unsigned char type =
        DT_UNKNOWN; // "DT_…"; DT_UNKNOWN only where the system would not tell even when asked
    ino_t inode = 0;
};

// A directory in the course of a walk. Belongs to the walker; used only during visit() and on its thread.
class OpenDirectory {
public:
    // The next entry but "." and ".."; nothing at the end, after an error and once the walk is cancelled.
    virtual const DirectoryEntry* next() = 0;

    // Has the entry that next() gave last walked as well. Its type must be DT_DIR. Boundaries of the walk
    // are passed over silently.
    virtual void descend() = 0;

    // Ends the walk for all threads, as complete: what was looked for is found.
    virtual void endWalk() = 0;

    virtual int descriptor() const = 0;

    // Its own name; that of its real path for the root.
    virtual std::string_view name() const = 0;

    // Relative to the root, empty for the root itself. Put together at each call.
    virtual std::string path() const = 0;

protected:
    ~OpenDirectory() = default;
};

// What is done on a walk. Called on several threads at the same time.
class DirectoryVisitor {
public:
    virtual ~DirectoryVisitor() = default;

    virtual void visit(OpenDirectory& directory) = 0;

    // The directory could not be opened or not be read to its end. The path is relative to the root.
    virtual void unreadable(const std::string& path, int systemError) = 0;
};

// Goes through a directory tree on all processors, deepest directories first, so that what is pending stays
// small. Links below the root are never followed. Directories that vanish meanwhile are passed over, pseudo
// file systems are never entered. Holds no lock while it calls the visitor. One walk after another; all are
// over once cancelled.
class DirectoryWalker {
public:
    struct Options {
        bool stayOnVolume = false; // enter no mount point below the root
        unsigned int threads = 0;  // 0 for one per processor
    };
    enum class End { Complete, Cancelled };

    DirectoryWalker() = default;
    explicit DirectoryWalker(const Options& options) : m_options(options) {}

    // Comes back when the walk is over. An error means that the root could not be opened or memory ran out;
    // no other directory's trouble ends a walk. The root may be a link. The caller's thread takes part.
    Result<End> walk(const std::string& root, DirectoryVisitor& visitor);

    // From any thread or a signal handler, at any time; the walk ends at the next entry.
    void cancel() { m_cancelled.store(true, std::memory_order_relaxed); }
    bool isCancelled() const { return m_cancelled.load(std::memory_order_relaxed); }

    // In all walks so far; from any thread.
    std::uint64_t directoriesSeen() const { return m_directoriesSeen.load(std::memory_order_relaxed); }

private:
    Options m_options;
    std::atomic<bool> m_cancelled = false;
    std::atomic<std::uint64_t> m_directoriesSeen = 0;
};

} // namespace veilkeep
