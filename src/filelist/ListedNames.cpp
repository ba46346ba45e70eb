#include "filelist/ListedNames.h"

namespace veilkeep {

void ListedNames::clear() {
    m_bytes.clear();
    m_begins.resize(1);
}

void ListedNames::completeFrom(const std::vector<ListedFile>& files) {
    m_begins.reserve(files.size() + 1);
    for (std::size_t index = m_begins.size() - 1; index < files.size(); ++index) {
        m_bytes += files[index]->name();
        m_begins.push_back(m_bytes.size());
    }
}

} // namespace veilkeep
