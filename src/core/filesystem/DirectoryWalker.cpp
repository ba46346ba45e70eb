#include "core/filesystem/DirectoryWalker.h"

#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/filesystem/MountTable.h"
#include "core/filesystem/PendingDirectories.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/filesystem/WalkBoundaries.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <exception>
#include <functional>
#include <memory>
#include <new>
#include <thread>
#include <utility>
#include <vector>

namespace veilkeep {
namespace {

constexpr int openFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK;
constexpr std::size_t blockSize = std::size_t{128} << 10;

// What the kernel writes before each name of a block of entries.
struct EntryHeader {
    std::uint64_t inode;
    std::int64_t offset;
    std::uint16_t length;
    unsigned char type;
};
constexpr std::size_t headerSize = offsetof(EntryHeader, type) + 1;

UniqueFd openBelow(int directory, const std::string& name) {
    return UniqueFd(
        retryOnInterrupt([&] { return ::openat(directory, name.c_str(), openFlags | O_NOFOLLOW); }));
}

// The directory was there when its parent was read and is not, or is something else, now.
bool hasVanished(int systemError) {
    return systemError == ENOENT || systemError == ENOTDIR || systemError == ELOOP || systemError == ESTALE;
}

bool isDotOrDotDot(const char* name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

int descriptorsToHold() {
    rlimit limit = {};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    return static_cast<int>(std::min<rlim_t>(limit.rlim_cur / 4, 256));
}

unsigned int threadsFor(unsigned int wanted) {
    return wanted > 0 ? wanted : std::clamp(std::thread::hardware_concurrency(), 1U, 32U);
}

// What the threads of one walk share.
struct Walk {
    DirectoryVisitor& visitor;
    const WalkBoundaries& boundaries;
    const std::atomic<bool>& cancelled;
    std::atomic<std::uint64_t>& directoriesSeen;
    std::string rootName;
    PendingDirectories pending = {};
    std::atomic<int> heldDescriptors = 0;
    std::shared_ptr<const HeldDescriptor> rootDescriptor = {}; // what was closed is opened again from here
    const int mostHeldDescriptors = descriptorsToHold();
    std::atomic<bool> outOfMemory = false;
    std::atomic<bool> endedByVisitor = false;

    bool isOver() const {
        return cancelled.load(std::memory_order_relaxed) || endedByVisitor.load(std::memory_order_relaxed);
    }
};

class Reading final : public OpenDirectory {
public:
    Reading(Walk& walk, char* block, UniqueFd fd, std::shared_ptr<WalkPlace> parent, std::string name)
        : m_walk(walk),
          m_block(block),
          m_fd(std::move(fd)),
          m_parent(std::move(parent)),
          m_name(std::move(name)) {}

    const DirectoryEntry* next() override {
        while (!m_walk.isOver() && (m_at < m_end || readBlock())) {
            EntryHeader header = {};
            std::memcpy(&header, m_block + m_at, headerSize);
            const char* name = m_block + m_at + headerSize;
            m_at += header.length;
            if (!isDotOrDotDot(name) && take(name, header))
                return &m_entry;
        }
        return nullptr;
    }

    void descend() override {
        if (m_walk.boundaries.mayStopAt(m_entry.name) &&
            m_walk.boundaries.stopsAt(joinPath(path(), m_entry.name)))
            return;
        m_subdirectories.append(m_entry.name).push_back('\0');
    }

    void endWalk() override { m_walk.endedByVisitor.store(true, std::memory_order_relaxed); }

    int descriptor() const override { return m_fd.get(); }

    std::string_view name() const override { return m_parent ? m_name : m_walk.rootName; }

    std::string path() const override {
        return m_parent ? joinPath(m_parent->path(), m_name) : std::string();
    }

    // Hands what is below over to the threads.
    void finish() {
        if (m_subdirectories.empty())
            return;
        PendingLevel level;
        level.place = std::make_shared<WalkPlace>(std::move(m_parent), std::move(m_name));
        const bool isRoot = !level.place->parent;
        if (isRoot || m_walk.heldDescriptors < m_walk.mostHeldDescriptors)
            level.descriptor = std::make_shared<HeldDescriptor>(std::move(m_fd), m_walk.heldDescriptors);
        level.place->descriptor = level.descriptor;
        if (isRoot)
            m_walk.rootDescriptor = level.descriptor;
        level.names = std::move(m_subdirectories);
        m_walk.pending.push(std::move(level));
    }

private:
    bool readBlock() {
        m_at = m_end = 0;
        if (m_atEnd)
            return false;
        const auto count =
            retryOnInterrupt([&] { return ::syscall(SYS_getdents64, m_fd.get(), m_block, blockSize); });
        m_atEnd = count <= 0;
        if (count < 0 && !hasVanished(errno))
            m_walk.visitor.unreadable(path(), errno);
        m_end = static_cast<std::size_t>(std::max(count, 0L));
        return !m_atEnd;
    }

    bool take(const char* name, const EntryHeader& header) {
        m_entry = {name, header.type, header.inode};
        return header.type != DT_UNKNOWN || askForType(name);
    }

    // False when the entry is gone.
    bool askForType(const char* name) {
        struct stat status = {};
        if (::fstatat(m_fd.get(), name, &status, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT) == 0)
            m_entry.type = static_cast<unsigned char>(IFTODT(status.st_mode));
        else if (hasVanished(errno))
            return false;
        else
            m_walk.visitor.unreadable(joinPath(path(), name), errno);
        return true;
    }

    Walk& m_walk;
    char* m_block;
    UniqueFd m_fd;
    std::shared_ptr<WalkPlace> m_parent; // nothing for the root
    std::string m_name;
    std::string m_subdirectories; // each ended by a NUL
    DirectoryEntry m_entry;
    std::size_t m_at = 0;
    std::size_t m_end = 0;
    bool m_atEnd = false;
};

// The place's descriptor; where it was closed it is opened again, step by step below the nearest place that
// is still open. Nothing where that fails, systemError says why.
std::shared_ptr<const HeldDescriptor> descriptorOf(Walk& walk, const WalkPlace& place, int& systemError) {
    std::vector<const WalkPlace*> steps;
    std::shared_ptr<const HeldDescriptor> descriptor;
    for (const WalkPlace* at = &place; !(descriptor = at->descriptor.lock()); at = at->parent.get())
        steps.push_back(at);
    for (; !steps.empty(); steps.pop_back()) {
        UniqueFd fd = openBelow(descriptor->get(), steps.back()->name);
        if (!fd) {
            systemError = errno;
            return nullptr;
        }
        descriptor = std::make_shared<HeldDescriptor>(std::move(fd), walk.heldDescriptors);
    }
    return descriptor;
}

void visitOpened(Walk& walk, Reading&& directory) {
    walk.directoriesSeen.fetch_add(1, std::memory_order_relaxed);
    walk.visitor.visit(directory);
    directory.finish();
}

void visitPending(Walk& walk, PendingDirectory pending, char* block) {
    int systemError = 0;
    if (!pending.parentDescriptor)
        pending.parentDescriptor = descriptorOf(walk, *pending.parent, systemError);
    UniqueFd fd;
    if (pending.parentDescriptor) {
        fd = openBelow(pending.parentDescriptor->get(), pending.name);
        systemError = fd ? 0 : errno;
    }
    if (fd) {
        pending.parentDescriptor.reset();
        visitOpened(walk, {walk, block, std::move(fd), std::move(pending.parent), std::move(pending.name)});
    } else if (!hasVanished(systemError)) {
        walk.visitor.unreadable(joinPath(pending.parent->path(), pending.name), systemError);
    }
}

// What each thread does. Running out of memory ends the whole walk.
template <class Step>
void guarded(Walk& walk, Step step) {
    try {
        step(std::make_unique_for_overwrite<char[]>(blockSize).get());
    } catch (const std::bad_alloc&) {
        walk.outOfMemory = true;
        walk.pending.stop();
    }
}

void walkPending(Walk& walk) {
    walk.pending.join();
    guarded(walk, [&](char* block) {
        while (auto directory = walk.isOver() ? std::nullopt : walk.pending.next())
            visitPending(walk, std::move(*directory), block);
    });
    if (walk.isOver())
        walk.pending.stop();
}

// With fewer threads where the system gives no more; the caller's own is enough.
std::vector<std::thread> startThreads(Walk& walk, unsigned int count) {
    std::vector<std::thread> threads;
    threads.reserve(count);
    try {
        while (threads.size() < count)
            threads.emplace_back(walkPending, std::ref(walk));
    } catch (const std::exception&) {
    }
    return threads;
}

void walkOnAllThreads(Walk& walk, unsigned int count) {
    std::vector<std::thread> threads = startThreads(walk, count - 1);
    walkPending(walk);
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace

Result<DirectoryWalker::End> DirectoryWalker::walk(const std::string& root, DirectoryVisitor& visitor) {
    UniqueFd fd(retryOnInterrupt([&] { return ::open(root.c_str(), openFlags); }));
    if (!fd)
        return Error::system("open", root, errno);
    const std::string realRoot = realPath(root).value_or(root);
    const auto kind =
        m_options.stayOnVolume ? WalkBoundaries::Kind::EveryMount : WalkBoundaries::Kind::PseudoFileSystems;
    const WalkBoundaries boundaries(*MountTable::current(), realRoot, kind);
    if (boundaries.rootIsPseudo())
        return End::Complete;
    Walk walk{visitor, boundaries, m_cancelled, m_directoriesSeen, std::string(lastPathComponent(realRoot))};
    guarded(walk, [&](char* block) { visitOpened(walk, {walk, block, std::move(fd), nullptr, {}}); });
    if (!walk.pending.isEmpty())
        walkOnAllThreads(walk, threadsFor(m_options.threads));
    if (walk.outOfMemory)
        return Error::system("walk", root, ENOMEM);
    return isCancelled() ? End::Cancelled : End::Complete;
}

} // namespace veilkeep
