#pragma once

#include <QString>

#include <cstddef>
#include <limits>
#include <span>

namespace veilkeep {

enum class RequestCommand { Add, Remove, Hide, Unhide, List, Status, Check, Locate, Restore, Merge };

// What each command takes, and what must be asked before it is worked on.
struct RequestRule {
    static constexpr std::size_t anyNumber = std::numeric_limits<std::size_t>::max();

    const char* name;
    RequestCommand command;
    bool passesGate;  // where a password is set: it changes something, or tells what is hidden
    bool changesList; // not done on a list that a newer version wrote
    std::size_t leastPaths;
    std::size_t mostPaths;

    // May be answered from the list's file while others change the list.
    bool onlyReads() const { return command == RequestCommand::List || command == RequestCommand::Status; }
};

std::span<const RequestRule> requestRules();

// Null for a command that is not known.
const RequestRule* requestRule(const QString& command);

// Names of options of a Request, beside its paths.
namespace requestOption {
inline constexpr auto interactive = "interactive"; // bool: questions are answered, so ask rather than collect
inline constexpr auto state = "state";             // of "list", a text: stateName() of the wanted ones
inline constexpr auto name = "name";               // of "list", a text: what their names hold
} // namespace requestOption

} // namespace veilkeep
