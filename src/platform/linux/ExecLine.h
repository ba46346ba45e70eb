#pragma once

#include "core/base/Result.h"

#include <optional>
#include <string>
#include <string_view>

// Programs in desktop entries and in service files of the session bus.
namespace veilkeep {

// Desktop entries double "%", since it begins a field code; service files know none.
enum class FieldCodes { Known, Unknown };

// The program's path as the beginning of an "Exec" value, with quotes where it needs them, and escaped as
// values of such files are; where launchers would not find it, as a word of "env". InvalidArgument for a path
// that cannot be written: these files must be UTF-8.
Result<std::string> execWord(const std::string& program, FieldCodes codes);

// As the first word of "ExecStart" in a unit of systemd.
Result<std::string> unitWord(const std::string& program);

// The path as a plain text value ("TryExec").
Result<std::string> entryText(const std::string& path);

// What an autostart entry starts, and whether it does.
struct StartingEntry {
    std::string program; // of "Exec"; looked for in PATH where it has no slash
    bool isOn = false;   // neither "Hidden" nor switched off the way GNOME does it
};

// Nothing for what is no desktop entry.
std::optional<StartingEntry> startingEntry(std::string_view content);

} // namespace veilkeep
