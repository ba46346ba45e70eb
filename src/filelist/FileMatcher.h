#pragma once

#include "filelist/FileList.h"
#include "filelist/FilePredicate.h"
#include "filelist/ListedNames.h"
#include "filelist/NamePattern.h"

#include <vector>

namespace veilkeep {

// A predicate made ready to be asked for many records. Main thread.
class FileMatcher {
public:
    explicit FileMatcher(const FilePredicate& predicate);

    bool matches(const File& file) const;

    // In their order. The names of these records are looked up, and kept for the next time, in `names`.
    std::vector<ListedFile> matchesAmong(const std::vector<ListedFile>& files, ListedNames& names) const;

private:
    bool hasStateAndGroup(const File& file) const;

    FilePredicate m_predicate;
    NamePattern m_name;
};

} // namespace veilkeep
