#include "platform/linux/filemanagers/FileManagers.h"

#include "core/base/PathText.h"
#include "core/environment/XdgDirectories.h"
#include "core/filesystem/ItemAtPath.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace veilkeep {
namespace {

constexpr FileManager managers[] = {
    {"Dolphin", "dolphin", "org.kde.dolphin.desktop"},
    {"Nautilus", "nautilus", "org.gnome.Nautilus.desktop"},
    {"Nemo", "nemo", "nemo.desktop"},
    {"Thunar", "thunar", "thunar.desktop", "org.xfce.Thunar"},
    {"Caja", "caja", "caja.desktop"},
};
constexpr const FileManager &dolphin = managers[0], &nautilus = managers[1], &nemo = managers[2],
                            &thunar = managers[3], &caja = managers[4];

using Base = FileManagerFile::Base;
using Format = EntryFormat;
constexpr auto nautilusUris = "NAUTILUS_SCRIPT_SELECTED_URIS", cajaUris = "CAJA_SCRIPT_SELECTED_URIS";

// Dolphin runs only service menus that are executable. Scripts are shown by their names.
constexpr FileManagerFile files[] = {
    {dolphin, "dolphin.desktop", Base::DataHome, "kio/servicemenus", "com.ostrel.Veilkeep.desktop",
     Format::KeyFile, 0755},
    {nautilus, "script.sh", Base::DataHome, "nautilus/scripts", "Hide with Veilkeep", Format::Shell, 0755,
     "--hide", nautilusUris},
    {nautilus, "script.sh", Base::DataHome, "nautilus/scripts", "Show in Veilkeep", Format::Shell, 0755,
     "--show", nautilusUris},
    {nemo, "hide.nemo_action", Base::DataHome, "nemo/actions", "com.ostrel.Veilkeep.hide.nemo_action",
     Format::KeyFile, 0644},
    {nemo, "show.nemo_action", Base::DataHome, "nemo/actions", "com.ostrel.Veilkeep.show.nemo_action",
     Format::KeyFile, 0644},
    {thunar, "thunar.xml", Base::ConfigHome, "Thunar", "uca.xml", Format::Xml, 0644},
    {caja, "script.sh", Base::ConfigHome, "caja/scripts", "Hide with Veilkeep", Format::Shell, 0755, "--hide",
     cajaUris},
    {caja, "script.sh", Base::ConfigHome, "caja/scripts", "Show in Veilkeep", Format::Shell, 0755, "--show",
     cajaUris},
};

// The absolute ones of a list with ":" between them.
std::vector<std::string> directoriesOf(const char* variable, const char* otherwise) {
    const char* const value = std::getenv(variable);
    std::string_view list = value && *value ? value : otherwise;
    std::vector<std::string> directories;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(':'), list.size());
        if (list.starts_with('/'))
            directories.emplace_back(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return directories;
}

} // namespace

std::span<const FileManager> fileManagers() {
    return managers;
}

std::span<const FileManagerFile> fileManagerFiles() {
    return files;
}

FileManagerPlaces FileManagerPlaces::current() {
    FileManagerPlaces places{directoriesOf("PATH", "/usr/local/bin:/usr/bin:/bin"),
                             directoriesOf("XDG_DATA_DIRS", "/usr/local/share:/usr/share"),
                             directoriesOf("XDG_CONFIG_DIRS", "/etc/xdg")};
    places.data.insert(places.data.begin(), XdgDirectories::current().dataHome);
    return places;
}

std::string programIn(const std::vector<std::string>& directories, const std::string& name) {
    for (const std::string& directory : directories) {
        std::string path = joinPath(directory, name);
        if (isProgramAt(path))
            return path;
    }
    return {};
}

bool isPresent(const FileManager& manager, const FileManagerPlaces& places) {
    return !programIn(places.programs, manager.program).empty() ||
           std::ranges::any_of(places.data, [&](const std::string& data) {
               return itemExistsAt(joinPath(joinPath(data, "applications"), manager.desktopEntry));
           });
}

} // namespace veilkeep
