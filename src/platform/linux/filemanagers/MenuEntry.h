#pragma once

#include "core/base/Result.h"

#include <string>

namespace veilkeep {

// One file through which a file manager has entries of ours in its menu. Errors name it.
class MenuEntry {
public:
    enum class State {
        Absent,
        Current,  // ours, as it would be installed now
        Outdated, // ours, of another version or starting another copy of the program
        Changed,  // ours, and changed by the user since: left as it is
        Foreign,  // somebody else's, or not to be read: left as it is
    };

    virtual ~MenuEntry() = default;

    virtual const std::string& path() const = 0;
    virtual State state() const = 0;

    // Puts it there, in the place of an older one. So many of the directories that it lies in were just made.
    virtual Result<void> install(int directoriesMade) = 0;

    // Takes away what is ours: how many of the directories had been made for it. ESTALE where the user
    // changed it.
    virtual Result<int> remove() = 0;

protected:
    MenuEntry() = default;
    MenuEntry(const MenuEntry&) = default;
    MenuEntry& operator=(const MenuEntry&) = default;
};

} // namespace veilkeep
