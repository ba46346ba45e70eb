#include "ctl/CommandLine.h"

#include "format/PrintableName.h"

#include <optional>
#include <string_view>

namespace veilkeep {
namespace {

std::optional<CommandLine::Command> commandNamed(std::string_view name) {
    if (name == "hide")
        return CommandLine::Command::Hide;
    if (name == "unhide")
        return CommandLine::Command::Unhide;
    if (name == "restore")
        return CommandLine::Command::Restore;
    return std::nullopt;
}

bool isOption(std::string_view argument) {
    return argument.size() > 1 && argument.starts_with('-');
}

} // namespace

const char* const usageText =
    "Usage: veilkeepctl hide [-0] PATH...\n"
    "       veilkeepctl unhide [-0] PATH...\n"
    "       veilkeepctl restore [-0] DIRECTORY...\n"
    "\n"
    "Hides files and folders from ordinary view and brings them back.\n"
    "\n"
    "  hide       moves each item into the directory .SYS_INDEX beside it, under a\n"
    "             scrambled name, and prints its new path\n"
    "  unhide     brings each item back, named by its visible or its hidden path,\n"
    "             and prints its visible path\n"
    "  restore    looks for hidden items below each directory, leaves a record of each\n"
    "             for the application's list, and prints their hidden paths\n"
    "\n"
    "Options:\n"
    "  -0, --null   end each printed path with a NUL byte and print it as it is\n"
    "  --           what follows are paths, even if they begin with a dash\n"
    "  --help       show this text\n"
    "  --version    show the version\n"
    "\n"
    "On a terminal, control characters in names are printed as escapes such as \\n.\n"
    "\n"
    "Exit status: 0 if all went well, 1 if some item failed, 2 for wrong usage.\n";

std::variant<CommandLine, std::string> CommandLine::parse(std::span<char* const> arguments) {
    CommandLine line;
    std::optional<Command> command;
    bool optionsEnded = false;
    for (const std::string_view argument : arguments) {
        if (!optionsEnded && argument == "--help")
            return CommandLine{Command::Help, false, {}};
        if (!optionsEnded && argument == "--version")
            return CommandLine{Command::Version, false, {}};
        if (!optionsEnded && argument == "--")
            optionsEnded = true;
        else if (!optionsEnded && (argument == "-0" || argument == "--null"))
            line.endNamesWithNul = true;
        else if (!optionsEnded && isOption(argument))
            return "unknown option '" + printableName(argument) + "'";
        else if (command)
            line.paths.emplace_back(argument);
        else if (command = commandNamed(argument); !command)
            return "unknown command '" + printableName(argument) + "'";
    }
    if (!command)
        return std::string("a command is missing");
    if (line.paths.empty())
        return std::string("a path is missing");
    line.command = *command;
    return line;
}

} // namespace veilkeep
