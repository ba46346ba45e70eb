#pragma once

#include <span>
#include <string>
#include <variant>
#include <vector>

namespace veilkeep {

enum class ExitStatus : int { AllWell = 0, SomeFailed = 1, WrongUsage = 2 };

// What the user asked for. Options and paths may stand in any order; after "--" everything is a path.
struct CommandLine {
    enum class Command { Hide, Unhide, Restore, Help, Version };

    Command command = Command::Help;
    bool endNamesWithNul = false; // -0
    std::vector<std::string> paths;

    // The arguments without the program's name; a sentence about the mistake when they make no request.
    static std::variant<CommandLine, std::string> parse(std::span<char* const> arguments);
};

extern const char* const usageText;

} // namespace veilkeep
