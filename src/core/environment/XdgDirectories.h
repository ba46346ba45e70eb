#pragma once

#include <string>

namespace veilkeep {

// The user whose items are dealt with: the caller, or under root with PKEXEC_UID in the environment the user
// who asked for administrator rights.
unsigned int actingUserId();

// That user's home directory: HOME where it is the caller's own and absolute, else the user database's
// answer; empty when neither is to be had.
std::string homeDirectory();

// The base directories of the XDG Base Directory Specification, without a "/" at the end. A variable that is
// unset, empty or not absolute counts as absent.
struct XdgDirectories {
    std::string dataHome;   // ~/.local/share
    std::string configHome; // ~/.config
    std::string stateHome;  // ~/.local/state
    std::string cacheHome;  // ~/.cache
    std::string runtimeDir; // empty where there is none

    // As the environment says; under root with PKEXEC_UID the defaults below that user's home.
    static XdgDirectories current();
};

// Where Veilkeep itself keeps things. A place is empty where its base directory is.
struct OwnPlaces {
    std::string dataDirectory;       // the two lists
    std::string inProgressDirectory; // what cut-off workers leave behind
    std::string defaultsFile;        // user defaults
    std::string stateDirectory;      // log, problem reports

    static OwnPlaces current();
    static OwnPlaces in(const XdgDirectories& directories);
};

} // namespace veilkeep
