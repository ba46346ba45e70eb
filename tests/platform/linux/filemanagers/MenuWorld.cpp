#include "tests/platform/linux/filemanagers/MenuWorld.h"

#include <filesystem>

namespace veilkeep::test {
namespace {

namespace fs = std::filesystem;

std::string described(const fs::directory_entry& entry) {
    const std::string mode = std::to_string(modeOf(entry.path()));
    if (entry.is_symlink())
        return mode + " -> " + fs::read_symlink(entry.path()).string();
    return entry.is_directory() ? mode : mode + " " + readFile(entry.path());
}

} // namespace

MenuWorld::MenuWorld(const std::string& name) {
    bundle = tree.path(name);
    program = tree.makeFile(name + "/Contents/MacOS/Veilkeep",
                            "#!/bin/sh\nprintf '%s\\0' \"$@\" >\"$ARGUMENTS\"\n", 0755);
    fs::copy(VEILKEEP_SOURCE "/resources/filemanagers",
             tree.makeDirectory(name + "/Contents/Resources/filemanagers"));
    tree.makeDirectory("home");
}

void MenuWorld::addManagers(const std::vector<std::string>& programs) const {
    for (const std::string& each : programs)
        tree.makeFile("bin/" + each, "#!/bin/sh\n", 0755);
}

LinuxFileManagerMenu MenuWorld::menu(const std::string& version) const {
    return LinuxFileManagerMenu(
        {.bundle = bundle,
         .version = version,
         .places = {.programs = {tree.path("bin")},
                    .data = {tree.path("home/.local/share"), tree.path("usr")},
                    .config = {tree.path("etc")}},
         .isOnBus = [this](const std::string& each) { return running.contains(each); }});
}

MenuWorld::Home MenuWorld::home() const {
    Home all;
    for (const auto& entry : fs::recursive_directory_iterator(tree.home()))
        all.emplace(fs::relative(entry.path(), tree.home()).string(), described(entry));
    return all;
}

} // namespace veilkeep::test
