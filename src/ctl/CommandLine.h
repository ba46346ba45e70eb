#pragma once

#include "ctl/CommandTable.h"

#include <QVariantMap>

#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace veilkeep {

// What the user asked for. Options and paths may stand in any order; after "--" everything is a path.
struct CommandLine {
    const CommandSyntax* command = nullptr; // null: help or version alone
    bool wantsHelp = false;
    bool wantsVersion = false;
    bool endNamesWithNul = false;
    bool json = false;
    bool yes = false;
    bool passwordFromInput = false;
    bool dryRun = false;
    bool staysOnVolume = false;
    std::optional<std::string> copyTo;
    std::vector<std::string> answers;
    std::optional<std::string> state;
    std::optional<std::string> name;
    std::optional<std::string> group;
    bool all = false;
    std::vector<std::string> paths;
    QVariantMap groupOptions; // of "group", whose words are no paths

    bool isRescue() const { return command && command->name == std::string_view("rescue"); }
    bool isPasswordCommand() const { return command && command->name == std::string_view("password"); }

    // The arguments without the program's name; a sentence about the mistake when they make no request.
    static std::variant<CommandLine, std::string> parse(std::span<char* const> arguments);
};

} // namespace veilkeep
