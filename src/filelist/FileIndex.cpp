#include "filelist/FileIndex.h"

#include <bit>
#include <functional>
#include <utility>

namespace veilkeep {

std::optional<std::size_t> FileIndex::withPath(Files files, std::string_view path) const {
    return least(ByPath, hashOf(path), [&](Position position) { return files[position]->path() == path; });
}

std::optional<std::size_t> FileIndex::withOriginalPath(Files files, std::string_view originalPath) const {
    return least(ByOriginalPath, hashOf(originalPath),
                 [&](Position position) { return files[position]->originalPath() == originalPath; });
}

std::optional<std::size_t> FileIndex::positionOf(Files files, const std::shared_ptr<const File>& file) const {
    return least(ByPath, hashOf(file->path()), [&](Position position) { return files[position] == file; });
}

std::size_t FileIndex::countOfGroup(std::int64_t groupID) const {
    const auto found = m_counts.find(groupID);
    return found == m_counts.end() ? 0 : found->second;
}

void FileIndex::clear() {
    *this = FileIndex();
}

void FileIndex::append(const File& file) {
    m_entries.push_back(entryOf(file));
    ++m_counts[m_entries.back().groupID];
    if (m_entries.size() > m_buckets[ByPath].size())
        chainAnew(std::bit_ceil(m_entries.size()));
    else
        link(static_cast<Position>(m_entries.size() - 1));
}

void FileIndex::update(std::size_t position, const File& file) {
    unlink(static_cast<Position>(position));
    Entry& entry = m_entries[position];
    discount(entry.groupID);
    entry = entryOf(file);
    ++m_counts[entry.groupID];
    link(static_cast<Position>(position));
}

void FileIndex::removeMarked(const std::vector<bool>& isLeaving) {
    std::size_t kept = 0;
    for (std::size_t position = 0; position < m_entries.size(); ++position) {
        if (isLeaving[position])
            discount(m_entries[position].groupID);
        else
            m_entries[kept++] = m_entries[position];
    }
    m_entries.resize(kept);
    chainAnew(std::bit_ceil(kept));
}

void FileIndex::arrange(std::span<const std::size_t> order) {
    std::vector<Entry> arranged;
    arranged.reserve(order.size());
    for (const std::size_t position : order)
        arranged.push_back(m_entries[position]);
    m_entries = std::move(arranged);
    chainAnew(std::bit_ceil(m_entries.size()));
}

FileIndex::Entry FileIndex::entryOf(const File& file) {
    return {{hashOf(file.path()), hashOf(file.originalPath())}, {none, none}, file.groupID()};
}

std::uint32_t FileIndex::hashOf(std::string_view text) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>()(text));
}

FileIndex::Position& FileIndex::bucket(Key key, std::uint32_t hash) {
    return m_buckets[key][hash & (m_buckets[key].size() - 1)];
}

FileIndex::Position FileIndex::firstOf(Key key, std::uint32_t hash) const {
    return m_buckets[key].empty() ? none : m_buckets[key][hash & (m_buckets[key].size() - 1)];
}

void FileIndex::link(Position position) {
    for (const Key key : {ByPath, ByOriginalPath}) {
        Entry& entry = m_entries[position];
        entry.next[key] = std::exchange(bucket(key, entry.hash[key]), position);
    }
}

void FileIndex::unlink(Position position) {
    for (const Key key : {ByPath, ByOriginalPath}) {
        const Entry& entry = m_entries[position];
        Position* place = &bucket(key, entry.hash[key]);
        while (*place != position)
            place = &m_entries[*place].next[key];
        *place = entry.next[key];
    }
}

void FileIndex::chainAnew(std::size_t bucketCount) {
    for (std::vector<Position>& buckets : m_buckets)
        buckets.assign(bucketCount, none);
    for (std::size_t position = m_entries.size(); position-- > 0;)
        link(static_cast<Position>(position));
}

void FileIndex::discount(std::int64_t groupID) {
    const auto found = m_counts.find(groupID);
    if (--found->second == 0)
        m_counts.erase(found);
}

template <class IsWanted>
std::optional<std::size_t> FileIndex::least(Key key, std::uint32_t hash, IsWanted isWanted) const {
    Position found = none;
    for (Position position = firstOf(key, hash); position != none; position = m_entries[position].next[key])
        if (position < found && m_entries[position].hash[key] == hash && isWanted(position))
            found = position;
    return found == none ? std::nullopt : std::optional<std::size_t>(found);
}

} // namespace veilkeep
