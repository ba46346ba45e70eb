#pragma once

#include "platform/linux/filemanagers/EntryQuoting.h"

#include <sys/types.h>

#include <span>
#include <string>
#include <vector>

namespace veilkeep {

// A file manager that can have entries of ours, and how one is told of them that runs.
struct FileManager {
    const char* name;    // as its users know it
    const char* program; // looked for in the directories of programs
    const char* desktopEntry;
    const char* restartedOnBus = nullptr; // its name there, where it has to be restarted to notice a change
};

// What is installed for one.
struct FileManagerFile {
    enum class Base { DataHome, ConfigHome };

    const FileManager& manager;
    const char* finderPluginName;       // the template in the bundle
    Base base;                          // that the location is relative to
    const char* finderPluginLocation;   // of the user's
    const char* outputFinderPluginName; // in it
    EntryFormat format;
    mode_t mode;
    const char* option = ""; // of the program, and the variable with the items, in the template of scripts
    const char* uris = "";
};

std::span<const FileManager> fileManagers();
std::span<const FileManagerFile> fileManagerFiles();

// Where they are looked for.
struct FileManagerPlaces {
    std::vector<std::string> programs;
    std::vector<std::string> data;   // "applications" lies below
    std::vector<std::string> config; // the system's

    static FileManagerPlaces current();
};

bool isPresent(const FileManager& manager, const FileManagerPlaces& places);

// The first of this name that can be run; empty where there is none.
std::string programIn(const std::vector<std::string>& directories, const std::string& name);

} // namespace veilkeep
