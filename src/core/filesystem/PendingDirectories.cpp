#include "core/filesystem/PendingDirectories.h"

namespace veilkeep {

WalkPlace::WalkPlace(std::shared_ptr<WalkPlace> parentPlace, std::string ownName)
    : parent(std::move(parentPlace)), name(std::move(ownName)) {}

// Lets go of a long chain one by one: a place destroyed in the loop leaves its parent to the loop. If each
// destroyed its parent itself, a deep tree would exhaust the stack.
WalkPlace::~WalkPlace() {
    thread_local std::shared_ptr<WalkPlace>* loop = nullptr;
    if (loop) {
        *loop = std::move(parent);
        return;
    }
    std::shared_ptr<WalkPlace> next = std::move(parent);
    loop = &next;
    while (next)
        std::exchange(next, nullptr).reset();
    loop = nullptr;
}

std::string WalkPlace::path() const {
    std::size_t size = 0;
    for (const WalkPlace* place = this; place->parent; place = place->parent.get())
        size += place->name.size() + 1;
    if (size == 0)
        return {};
    std::string path(size - 1, '/');
    std::size_t end = path.size();
    for (const WalkPlace* place = this; place->parent; place = place->parent.get()) {
        path.replace(end - place->name.size(), place->name.size(), place->name);
        end -= place->name.size() + (place->parent->parent ? 1 : 0);
    }
    return path;
}

void PendingDirectories::join() {
    const std::lock_guard lock(m_mutex);
    ++m_busyThreads;
}

void PendingDirectories::push(PendingLevel level) {
    const std::lock_guard lock(m_mutex);
    m_levels.push_back(std::move(level));
    if (m_waitingThreads > 0)
        m_changed.notify_all();
}

std::optional<PendingDirectory> PendingDirectories::next() {
    std::unique_lock lock(m_mutex);
    --m_busyThreads;
    ++m_waitingThreads;
    m_changed.wait(lock, [&] { return m_stopped || !m_levels.empty() || m_busyThreads == 0; });
    --m_waitingThreads;
    if (m_stopped || m_levels.empty()) {
        m_changed.notify_all();
        return std::nullopt;
    }
    PendingLevel& level = m_levels.back();
    PendingDirectory directory{level.place, level.descriptor, level.names.c_str() + level.begin};
    ++m_busyThreads;
    level.begin += directory.name.size() + 1;
    if (level.begin >= level.names.size())
        m_levels.pop_back();
    return directory;
}

void PendingDirectories::stop() {
    const std::lock_guard lock(m_mutex);
    m_stopped = true;
    m_changed.notify_all();
}

bool PendingDirectories::isEmpty() const {
    const std::lock_guard lock(m_mutex);
    return m_levels.empty();
}

} // namespace veilkeep
