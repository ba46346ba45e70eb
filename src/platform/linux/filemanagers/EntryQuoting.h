#pragma once

#include "core/base/Result.h"

#include <string>

// A program's path as each kind of menu entry wants it written.
namespace veilkeep {

enum class EntryFormat {
    KeyFile, // "Exec" of desktop entries and of what resembles them
    Xml,     // the same, as text of an element
    Shell,
};

// InvalidArgument for a path that the format cannot carry: all but Shell hold text without control
// characters.
Result<std::string> quotedProgram(const std::string& path, EntryFormat format);

} // namespace veilkeep
