#pragma once

#include "core/base/Error.h"
#include "platform/linux/checkup/BusFacts.h"
#include "platform/linux/filemanagers/MenuEntry.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace veilkeep {

// Where this process runs.
struct SurroundingsFacts {
    std::vector<std::string> desktops = {}; // as XDG_CURRENT_DESKTOP names them
    bool hasDisplay = false;
    bool isWayland = false;
    bool isRemote = false; // over ssh
    bool isContainer = false;
    bool isRoot = false;
};

// Who could ask for administrator rights, and for what.
struct RightsFacts {
    bool areWanted = false; // the setting
    bool isPkexecThere = false;
    bool isPolicyThere = false; // the file that tells polkit of the action
    std::string agent = {};     // a program known to ask, that runs as this user; empty where none does
    std::optional<Error> workerFault = {}; // why pkexec may not run the worker
};

struct ListFileFacts {
    std::string path;
    bool isThere = false;
    std::optional<Error> trouble = {}; // why it cannot be read or saved; names the path
};

struct DataFacts {
    std::string directory; // empty where there is no home
    bool isThere = false;
    std::optional<Error> trouble = {}; // why it cannot be written, or looked at
    unsigned int owner = 0;
    unsigned int mode = 0; // without the kind
    std::uint64_t freeBytes = 0;
    std::vector<std::string> damagedCopies; // names
    ListFileFacts list, groups, settings;
};

struct AutoHideFacts {
    std::optional<std::size_t> groups = 0; // that are marked so; nothing where they cannot be read
    bool isWatchEnabled = false;
    bool isLaunchedAtLogin = false;
    std::vector<std::string> switchedOff; // ways of leaving, in words
};

struct MenuEntryFact {
    std::string manager;
    std::string path;
    MenuEntry::State state;
};

struct ProgramFacts {
    std::string bundle;               // empty where this program lies in none
    std::vector<std::string> missing; // programs of the bundle that are not there or cannot be run
    std::string ownVersion, bundleVersion;
    std::string otherBundle, otherVersion; // the system's or the user's other copy, where that differs
    std::string qtPlugins;                 // directory
    bool hasSvgImages = false, hasXcb = false, hasWayland = false;
    std::string language;          // of the user's, that Veilkeep has texts in; empty for English
    bool hasQtTranslation = false; // of Qt's own texts in it
};

// All that a checkup looks at, as it was at one moment.
struct CheckupFacts {
    SurroundingsFacts surroundings;
    SessionBusFacts sessionBus;
    SystemBusFacts systemBus;
    RightsFacts rights;
    DataFacts data;
    AutoHideFacts autoHide;
    std::vector<MenuEntryFact> menuEntries;
    ProgramFacts program;
};

} // namespace veilkeep
