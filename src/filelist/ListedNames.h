#pragma once

#include "filelist/FileList.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// The names of a list in one piece: a search that goes from record to record waits for the memory most of its
// time. Owned by FilesController; main thread.
class ListedNames {
public:
    void clear();

    // Takes the names of the records beyond those that it has; these must be as they were.
    void completeFrom(const std::vector<ListedFile>& files);

    // False where it is among them under another name.
    bool isUpToDate(std::size_t index, std::string_view name) const {
        return index + 1 >= m_begins.size() || (*this)[index] == name;
    }

    std::string_view operator[](std::size_t index) const {
        return std::string_view(m_bytes).substr(m_begins[index], m_begins[index + 1] - m_begins[index]);
    }

private:
    std::string m_bytes;
    std::vector<std::size_t> m_begins{0}; // and at its back the end
};

} // namespace veilkeep
