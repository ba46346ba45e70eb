#include "ctl/CommandTable.h"

#include "requests/RequestRules.h"

#include <algorithm>

namespace veilkeep {
namespace {

using namespace commandOption;

constexpr OptionSyntax options[] = {
    {Null, "-0", "--null", nullptr, "end each printed path with a NUL byte and print it as it is"},
    {Json, nullptr, "--json", nullptr, "print one JSON document"},
    {State, nullptr, "--state", "STATE", "only items that are hidden, visible or broken"},
    {Name, nullptr, "--name", "PATTERN", "only items with this in their names; * and ? are wildcards"},
    {Group, nullptr, "--group", "NAME", "the group of this name, byte for byte"},
    {All, nullptr, "--all", nullptr, "all items of the list"},
    {Answer, nullptr, "--answer", "WORD", "answer a question with the button of this title; may be repeated"},
    {Yes, nullptr, "--yes", nullptr, "answer questions with their default buttons"},
    {DryRun, nullptr, "--dry-run", nullptr, "only show what would be done"},
    {To, nullptr, "--to", "DIRECTORY", "copy what is hidden there, and change nothing where it lies"},
    {OneFileSystem, nullptr, "--one-file-system", nullptr, "do not enter other file systems"},
    {PasswordStdin, nullptr, "--password-stdin", nullptr, "read the password from standard input"},
};

constexpr CommandSyntax commands[] = {
    {"add", "PATH...", "puts items into the list",
     "Puts each item into Veilkeep's list without moving it, and prints its path. With --group\n"
     "the items belong to that group.",
     Null | Answer | Yes | Group},
    {"remove", "PATH...", "takes items off the list",
     "Takes each item off the list and prints where it lies; it is not deleted. Asks first, and\n"
     "of hidden items whether they are to be brought back: then all stay in the list.",
     Null | Answer | Yes},
    {"hide", "PATH...|--group NAME|--all", "hides items, and lists them where they are not",
     "Moves each item into the directory .SYS_INDEX beside it, under a scrambled name, and\n"
     "prints its new path. Items that are not in the list are added to it.",
     Null | Answer | Yes | Group | All},
    {"unhide", "PATH...|--group NAME|--all", "brings hidden items back",
     "Brings each item back, named by its visible or its hidden path, and prints its visible\n"
     "path. Hidden items that are not in the list are brought back and listed as well.",
     Null | Answer | Yes | Group | All},
    {"list", "", "prints the list",
     "Prints a line for each item: its state, a tab, and its visible path. With -0 it prints\n"
     "the visible paths alone.",
     Null | Json | State | Name | Group},
    {"status", "", "prints how many items are listed, and who owns the list",
     "Prints how many items there are in which state, and whether Veilkeep's application runs.", Json},
    {"check", "", "looks for items that are missing",
     "Takes in what cut-off moves left behind, looks at each item, and searches whole volumes\n"
     "for those that are not at their places. Prints the new path of each that was found\n"
     "elsewhere, and tells those that are missing.",
     Null | Answer | Yes},
    {"locate", "PATH NEWPATH", "says where a missing item is",
     "Lists the item at NEWPATH in place of the missing item PATH.", Null | Answer | Yes},
    {"restore", "DIRECTORY...", "finds hidden items and lists them",
     "Looks for hidden items below each directory, puts those that are not in the list into\n"
     "it, and prints their hidden paths. Nothing is moved.",
     Null | Answer | Yes},
    {"rescue", "DIRECTORY...", "brings back all that is hidden, without any list",
     "Looks for hidden items below each directory, shows where each would come back to, and\n"
     "moves them there once you agree. Needs neither the list nor the application, so it works\n"
     "on another computer's disk and, as root, on other users' files. What is in the way stays:\n"
     "the item gets a number then. A directory may also be a .SYS_INDEX or one hidden item. With\n"
     "--to, items are copied out instead, for disks that are read-only.",
     Null | Answer | Yes | DryRun | To | OneFileSystem | PasswordStdin},
    {"merge", "FILE", "takes over the items of another list",
     "Adds the items of another list's file to the list, where they are not in it.", Answer | Yes},
    {"groups", "", "prints the groups",
     "Prints a line for each group: whether it is hidden or shown, \"auto\" where it is hidden and\n"
     "shown by itself, how many items it has, and its name, with tabs between them. With -0 it\n"
     "prints the names alone.",
     Null | Json},
    {"group", "ACTION [NAME...]", "adds, changes, orders or removes a group",
     "  add [NAME]            adds a group, and prints its name\n"
     "  remove NAME           removes it; its items move to \"All Files\". Asks first\n"
     "  rename NAME NEWNAME   gives it another name\n"
     "  icon NAME ICON        gives it the icon in a file, named by a path with a slash, or one of\n"
     "                        Veilkeep's own\n"
     "  autohide NAME on|off  whether its items are hidden when you leave, and shown when you\n"
     "                        come back\n"
     "  order NAME POSITION   moves it among the groups that can move, the first of which has the\n"
     "                        position 1; a greater number than there are is the end\n"
     "  order NAME before OTHER\n"
     "                        moves it in front of another one of these",
     Null | Answer | Yes},
    {"move", "--group NAME PATH...", "moves items of the list to a group",
     "Makes each item, which must be in the list, one of that group, and prints where it lies.\n"
     "Nothing is moved on the disk.",
     Null | Group},
    {"autohide", "", "hides the AutoHide groups, as when you leave",
     "Hides all items of the groups that are marked so. Asks neither a question nor for the\n"
     "password, so that a screen locker can call it. What stays visible is told on standard\n"
     "error, and the exit status is 1 then.",
     0},
    {"autounhide", "", "shows the AutoHide groups, as when you come back",
     "Brings back all items of the groups that are marked so, and prints their visible paths;\n"
     "once after they were hidden by autohide or when you left.",
     Null},
    {"password", "set|change|off|check", "protects Veilkeep with a password",
     "Sets the password that Veilkeep asks for before it does anything, changes it, switches it\n"
     "off, or checks whether one is the right one. It enciphers nothing. With --password-stdin\n"
     "each password is a line of standard input: the new one for set, the present and the new\n"
     "one for change, the present one for off and check.",
     PasswordStdin},
    {"watch", "", "hides the AutoHide groups whenever you leave, until it is ended",
     "Stays, and hides the items of AutoHide groups when the computer goes to sleep, the screen\n"
     "is locked or another user's session comes to the front, and before it ends itself. When\n"
     "you come back it shows them, unless Veilkeep has a password. Other commands work through\n"
     "it meanwhile. Where a systemd user session runs, let that start it:\n"
     "systemctl --user enable --now veilkeep-watch",
     0},
    {"doctor", "", "says what of this desktop will not work, and what to do",
     "Looks at all that Veilkeep needs of the desktop and the system, and says of each whether it\n"
     "works, is limited or does not work, what that means, and what can be done: packages to\n"
     "install, settings to change. It starts no service, asks no password, changes nothing on the\n"
     "disk, and takes some three seconds where a bus hangs. The exit status is 1 where something\n"
     "does not work.",
     Json},
    {"uninstall", "", "removes Veilkeep where you installed it for yourself",
     "Takes away what Veilkeep made when it offered to install itself: its program, its entry in\n"
     "menus, its commands, and the entry that starts it at login. What was changed since stays and\n"
     "is named. The list, the settings and all items stay, hidden ones hidden: bring them back\n"
     "first, with veilkeepctl unhide --all. Veilkeep must not be running. Asks first.",
     Answer | Yes | PasswordStdin},
};

std::string padded(std::string text, std::size_t width) {
    text.resize(std::max(width, text.size() + 1), ' ');
    return text;
}

std::string optionLine(const OptionSyntax& option) {
    std::string names = option.shortName ? std::string(option.shortName) + ", " : std::string();
    names += option.longName;
    if (option.value)
        names += std::string(" ") + option.value;
    return "  " + padded(names, 18) + option.meaning + "\n";
}

std::string usageOf(const CommandSyntax& command) {
    std::string usage = std::string("veilkeepctl ") + command.name;
    for (const OptionSyntax& option : options)
        if ((optionsOf(command) & option.option) &&
            std::string_view(command.arguments).find(option.longName) == std::string_view::npos)
            usage += std::string(" [") + (option.shortName ? option.shortName : option.longName) +
                     (option.value ? std::string(" ") + option.value : "") + "]";
    return usage + (*command.arguments ? " " : "") + command.arguments + "\n";
}

} // namespace

std::span<const CommandSyntax> commandTable() {
    return commands;
}

std::span<const OptionSyntax> optionTable() {
    return options;
}

const CommandSyntax* commandNamed(std::string_view name) {
    const auto found = std::ranges::find(commands, name, &CommandSyntax::name);
    return found == std::ranges::end(commands) ? nullptr : &*found;
}

std::uint32_t optionsOf(const CommandSyntax& command) {
    const RequestRule* rule = requestRule(command.name);
    return command.options | (rule && rule->passesGate ? PasswordStdin : 0U);
}

std::string helpText() {
    std::string text = "Usage: veilkeepctl COMMAND [OPTION...] [PATH...]\n"
                       "\n"
                       "Hides files and folders from ordinary view and brings them back.\n"
                       "\n";
    for (const CommandSyntax& command : commands)
        text += "  " + padded(command.name, 18) + command.summary + "\n";
    return text + "\n"
                  "  --help            show this text, or with a command what it does and takes\n"
                  "  --version         show the version\n"
                  "  --                what follows are paths, even if they begin with a dash\n"
                  "\n"
                  "Exit status: 0 if all went well, 1 if some item failed, 2 for wrong usage, 3 if the\n"
                  "request was refused, 4 if another process owns the list and did not answer.\n";
}

std::string helpText(const CommandSyntax& command) {
    std::string text = "Usage: " + usageOf(command) + "\n" + command.details + "\n\n";
    for (const OptionSyntax& option : options)
        if (optionsOf(command) & option.option)
            text += optionLine(option);
    return text + "  --help            show this text\n";
}

} // namespace veilkeep
