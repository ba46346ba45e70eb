// Prints docs/settings.md, made from the table of the keys.

#include "core/storage/DefaultsKeys.h"

#include <cstdio>

namespace {

using veilkeep::DefaultsKeyRow;

const char* kindOf(const DefaultsKeyRow& row) {
    switch (row.kind) {
    case DefaultsKeyRow::Kind::Boolean:
        return "boolean";
    case DefaultsKeyRow::Kind::Integer:
        return "integer";
    case DefaultsKeyRow::Kind::String:
        break;
    }
    return "string";
}

const char* firstWriteOf(const DefaultsKeyRow& row) {
    switch (row.firstWrite) {
    case DefaultsKeyRow::FirstWrite::WhenSet:
        return "when it is set";
    case DefaultsKeyRow::FirstWrite::ByFirstRead:
        return "when it is first read";
    case DefaultsKeyRow::FirstWrite::AtStart:
        break;
    }
    return "at the start";
}

constexpr const char* introduction =
    "# Settings\n"
    "\n"
    "Everything that Veilkeep remembers beside the lists is in `$XDG_CONFIG_HOME/com.ostrel.Veilkeep.plist`\n"
    "(`~/.config` where that variable is not set), an XML property list. The programs read it anew whenever "
    "they\n"
    "need a value, so that a change takes effect at once; what holds from the next start on says so. A file "
    "that\n"
    "cannot be understood is kept beside it as `com.ostrel.Veilkeep.plist.damaged-TIME`, and all begins "
    "anew.\n"
    "Keys that are not in this table are left alone.\n"
    "\n"
    "This page is made from the table in `src/core/storage/DefaultsKeys.cpp` by `scripts/update-settings`.\n"
    "\n"
    "| Key | Kind | Meaning | Without it | First stored | Written by | Read by |\n"
    "|---|---|---|---|---|---|---|\n";

} // namespace

int main() {
    std::fputs(introduction, stdout);
    for (const DefaultsKeyRow& row : veilkeep::defaultsKeyRows())
        std::printf("| `%s` | %s | %s | %s | %s | %s | %s |\n", row.key, kindOf(row), row.meaning,
                    row.whenAbsent, firstWriteOf(row), row.writer, row.reader);
    return std::fflush(stdout) == 0 ? 0 : 1;
}
