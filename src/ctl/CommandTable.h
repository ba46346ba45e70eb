#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace veilkeep {

// The options of veilkeepctl, as bits of a set.
namespace commandOption {
enum : std::uint32_t {
    Null = 1 << 0,           // -0
    Json = 1 << 1,           // --json
    State = 1 << 2,          // --state WORD
    Name = 1 << 3,           // --name PATTERN
    Answer = 1 << 4,         // --answer WORD
    Yes = 1 << 5,            // --yes
    Group = 1 << 6,          // --group NAME
    All = 1 << 7,            // --all
    PasswordStdin = 1 << 8,  // --password-stdin
    DryRun = 1 << 9,         // --dry-run
    To = 1 << 10,            // --to DIRECTORY
    OneFileSystem = 1 << 11, // --one-file-system
};
} // namespace commandOption

struct OptionSyntax {
    std::uint32_t option;
    const char* shortName; // null where there is none
    const char* longName;
    const char* value; // what stands for its value, null where it takes none
    const char* meaning;
};

// How many paths it takes says its RequestRule.
struct CommandSyntax {
    const char* name;
    const char* arguments; // "PATH...", with options that stand in the place of paths or have to be given
    const char* summary;
    const char* details;
    std::uint32_t options; // beside those that optionsOf() adds
};

std::span<const CommandSyntax> commandTable();
std::span<const OptionSyntax> optionTable();

std::uint32_t optionsOf(const CommandSyntax& command); // of one that passes the gate, --password-stdin too

const CommandSyntax* commandNamed(std::string_view name); // null: there is none

std::string helpText();
std::string helpText(const CommandSyntax& command);

} // namespace veilkeep
