#pragma once

#include "platform/linux/filemanagers/MenuEntry.h"
#include "platform/linux/filemanagers/ThunarActions.h"

#include <vector>

namespace veilkeep {

// Our actions in the user's "uca.xml". Where he has none the file begins as a copy of the system's, which it
// stands in for, and goes again with our actions as long as that copy was not changed.
class ThunarEntry : public MenuEntry {
public:
    // The actions as they stand in the file.
    ThunarEntry(std::string path, std::string actions, std::string version,
                std::vector<std::string> systemFiles);

    const std::string& path() const override { return m_path; }
    State state() const override;
    Result<void> install(int directoriesMade) override;
    Result<int> remove() override;

private:
    Result<ThunarActions> read() const;
    bool isCurrent(const ThunarActions& found) const;
    bool isEdited(const ThunarActions& found) const;
    std::string newText() const; // of a file that is not there

    const std::string m_path, m_actions, m_version;
    const std::vector<std::string> m_systemFiles;
};

} // namespace veilkeep
