#include "filelist/FileMatcher.h"

#include <cstddef>

namespace veilkeep {
namespace {

// Copying one counts its owners, deep in the memory: those that are next are fetched meanwhile.
std::vector<ListedFile> filesAt(const std::vector<std::size_t>& positions,
                                const std::vector<ListedFile>& files) {
    constexpr std::size_t ahead = 16;
    std::vector<ListedFile> found;
    found.reserve(positions.size());
    for (std::size_t index = 0; index < positions.size(); ++index) {
        if (index + ahead < positions.size())
            __builtin_prefetch(files[positions[index + ahead]].get(), 1);
        found.push_back(files[positions[index]]);
    }
    return found;
}

} // namespace

FileMatcher::FileMatcher(const FilePredicate& predicate)
    : m_predicate(predicate), m_name(predicate.nameSearch) {}

bool FileMatcher::matches(const File& file) const {
    return hasStateAndGroup(file) && m_name.isIn(file.name());
}

std::vector<ListedFile> FileMatcher::matchesAmong(const std::vector<ListedFile>& files,
                                                  ListedNames& names) const {
    if (m_predicate == FilePredicate())
        return files;
    const bool searches = !m_predicate.nameSearch.isEmpty();
    if (searches)
        names.completeFrom(files);
    std::vector<std::size_t> positions;
    positions.reserve(files.size());
    for (std::size_t position = 0; position < files.size(); ++position)
        if ((!searches || m_name.isIn(names[position])) && hasStateAndGroup(*files[position]))
            positions.push_back(position);
    return filesAt(positions, files);
}

bool FileMatcher::hasStateAndGroup(const File& file) const {
    return (!m_predicate.state || file.state() == *m_predicate.state) &&
           (!m_predicate.groupID || file.groupID() == *m_predicate.groupID);
}

} // namespace veilkeep
