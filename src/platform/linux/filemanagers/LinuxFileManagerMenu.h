#pragma once

#include "core/environment/XdgDirectories.h"
#include "platform/FileManagerMenu.h"
#include "platform/linux/filemanagers/FileManagers.h"
#include "platform/linux/filemanagers/MenuEntry.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veilkeep {

struct MadePlace;

// Entries as files among the user's settings, made of the templates in the bundle. Main thread.
class LinuxFileManagerMenu : public FileManagerMenu {
public:
    struct Parts {
        std::string bundle; // whose program the entries start; empty: there is nothing to install
        std::string version;
        XdgDirectories user = XdgDirectories::current();
        FileManagerPlaces places = FileManagerPlaces::current();
        std::function<bool(const std::string& name)> isOnBus = isOnSessionBus;
    };

    explicit LinuxFileManagerMenu(Parts parts) : m_parts(std::move(parts)) {}

    bool isInstalled() const override;
    bool isSourceThere() const override;
    bool isAnyManagerPresent() const override;
    FileManagerChange install() override;
    FileManagerChange renew() override;
    FileManagerChange remove() override;
    std::vector<std::string> restart(const std::vector<FileManagerChange::Restart>& toRestart) override;

    // What is where entries would be installed now, for each file manager that is present; Current as well
    // where there is nothing, since everybody has the entry.
    struct Found {
        const char* manager;
        std::string path;
        MenuEntry::State state;
    };
    std::vector<Found> entries() const;

    static bool isOnSessionBus(const std::string& name);

private:
    std::string directoryOf(const FileManagerFile& file) const;
    Result<std::string> contentOf(const FileManagerFile& file) const;
    std::unique_ptr<MenuEntry> entryOf(const FileManagerFile& file, const std::string& content) const;
    bool isForEverybody(const FileManagerFile& file) const;
    bool isForEverybody(const FileManager& manager) const;
    void install(const FileManagerFile& file, FileManagerChange& change) const;
    void remove(const FileManagerFile& file, FileManagerChange& change, std::vector<MadePlace>& made) const;
    void noteChange(const FileManagerFile& file, const std::string& path, FileManagerChange& change) const;

    const Parts m_parts;
};

} // namespace veilkeep
