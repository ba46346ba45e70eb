#include "filelist/FileList.h"

#include "filelist/CurrentGroup.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace veilkeep {

bool FileList::contains(const ListedFile& file) const {
    return positionOf(file).has_value();
}

ListedFile FileList::withPath(std::string_view path) const {
    const auto position = m_index.withPath(m_files, path);
    return position ? m_files[*position] : nullptr;
}

ListedFile FileList::withOriginalPath(std::string_view originalPath) const {
    const auto position = m_index.withOriginalPath(m_files, originalPath);
    return position ? m_files[*position] : nullptr;
}

std::size_t FileList::countOfGroup(std::int64_t groupID) const {
    return groupID == CurrentGroup::allFiles ? size() : m_index.countOfGroup(groupID);
}

void FileList::assign(std::vector<File> files) {
    m_files.clear();
    m_index.clear();
    add(std::move(files));
    ++m_revision;
    emit wasAssigned();
}

ListedFile FileList::append(File file) {
    std::vector<File> files;
    files.push_back(std::move(file));
    append(std::move(files));
    return m_files.back();
}

void FileList::append(std::vector<File> files) {
    if (files.empty())
        return;
    const std::size_t first = size();
    const std::size_t count = files.size();
    add(std::move(files));
    ++m_revision;
    emit filesAppended(first, count);
}

void FileList::remove(std::span<const ListedFile> files) {
    std::vector<bool> isLeaving(size());
    for (const ListedFile& file : files)
        if (const auto position = positionOf(file))
            isLeaving[*position] = true;
    if (std::ranges::find(isLeaving, true) == isLeaving.end())
        return;
    std::size_t kept = 0;
    for (std::size_t position = 0; position < isLeaving.size(); ++position)
        if (!isLeaving[position])
            m_files[kept++].swap(m_files[position]);
    m_files.resize(kept);
    m_index.removeMarked(isLeaving);
    ++m_revision;
    emit filesRemoved();
}

void FileList::sort(std::span<const std::size_t> order) {
    assert(order.size() == size());
    if (std::ranges::is_sorted(order))
        return;
    std::vector<ListedFile> sorted;
    sorted.reserve(size());
    for (const std::size_t position : order)
        sorted.push_back(std::move(m_files[position]));
    m_files = std::move(sorted);
    m_index.arrange(order);
    ++m_revision;
    emit filesSorted();
}

void FileList::add(std::vector<File> files) {
    for (File& file : files) {
        m_files.push_back(std::make_shared<File>(std::move(file)));
        m_index.append(*m_files.back());
    }
}

// A record that is being changed may not lie where its path says any more.
std::optional<std::size_t> FileList::positionOf(const ListedFile& file) const {
    if (!file)
        return std::nullopt;
    if (const auto position = m_index.positionOf(m_files, file); position || m_changes == 0)
        return position;
    const auto found = std::ranges::find(m_files, file);
    return found == m_files.end() ? std::nullopt
                                  : std::optional(static_cast<std::size_t>(found - m_files.begin()));
}

FileList::Changing::Changing(FileList& list, const ListedFile& file)
    : m_list(list), m_file(file), m_before(file->properties()) {
    ++m_list.m_changes;
}

FileList::Changing::~Changing() {
    const bool isChanged = !(m_file->properties() == m_before);
    const auto position = isChanged ? m_list.positionOf(m_file) : std::nullopt;
    --m_list.m_changes;
    if (!position)
        return;
    m_list.m_index.update(*position, *m_file);
    ++m_list.m_revision;
    emit m_list.fileChanged(m_file);
}

FileList::Batch::~Batch() {
    if (--m_list.m_batches == 0)
        emit m_list.batchEnded();
}

// The list has made it, and not as a constant.
File& FileList::Changing::file() const {
    return const_cast<File&>(*m_file);
}

} // namespace veilkeep
