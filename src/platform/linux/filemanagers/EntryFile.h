#pragma once

#include "platform/linux/filemanagers/MenuEntry.h"

#include <sys/types.h>

namespace veilkeep {

// An entry that is a file of its own.
class EntryFile : public MenuEntry {
public:
    // The content has the placeholder of the mark. Without one nothing can be installed.
    EntryFile(std::string path, std::string content, std::string version, mode_t mode);

    const std::string& path() const override { return m_path; }
    State state() const override;
    Result<void> install(int directoriesMade) override;
    Result<int> remove() override;

private:
    const std::string m_path, m_content, m_version;
    const mode_t m_mode;
};

} // namespace veilkeep
