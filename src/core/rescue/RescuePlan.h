#pragma once

#include "core/rescue/HiddenFolders.h"

#include <functional>
#include <map>
#include <string>

namespace veilkeep {

// What is going to happen to one hidden item.
struct RescueStep {
    enum class Outcome {
        ComesBack,
        GetsNumber,   // its place is taken
        KeepsName,    // its hidden name could not be turned into a file's name
        CannotBeMoved // error says why
    };

    std::string hiddenPath;
    std::string place; // where it lies in the end, with the folders around it brought back as well
    Outcome outcome = Outcome::ComesBack;
    int error = 0; // errno; ENOTDIR where its ".SYS_INDEX" must not be used, E2BIG where its path is too long
};

// Works out beforehand what cloakWorker's "-rescue" will do, as far as that shows from outside. Keeps only
// what is out of the ordinary. Nothing is changed.
class RescuePlan {
public:
    explicit RescuePlan(const HiddenFolders& folders); // arranged, not owned

    // In the order of the moves. False from the function ends it.
    void forEach(const std::function<bool(const RescueStep&)>& function) const;

private:
    struct Exception {
        RescueStep::Outcome outcome = RescueStep::Outcome::ComesBack;
        int error = 0;
        std::string name; // that it gets; empty for the usual one
    };

    void lookAt(const HiddenFolder& folder);
    std::string placeOf(const std::string& hiddenPath) const;

    const HiddenFolders& m_folders;
    std::map<std::string, Exception> m_exceptions; // by hidden paths
};

} // namespace veilkeep
