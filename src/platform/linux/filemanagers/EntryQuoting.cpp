#include "platform/linux/filemanagers/EntryQuoting.h"

#include "core/base/Utf8.h"
#include "core/storage/XmlText.h"

#include <algorithm>
#include <string_view>

namespace veilkeep {
namespace {

std::string escaped(std::string_view text, std::string_view characters, std::string_view escape) {
    std::string result;
    for (const char each : text) {
        if (characters.find(each) != std::string_view::npos)
            result += escape;
        result += each;
    }
    return result;
}

std::string shellWord(const std::string& path) {
    std::string word = "'";
    for (const char each : path)
        word += each == '\'' ? std::string("'\\''") : std::string(1, each);
    return word + "'";
}

// As the Desktop Entry Specification quotes an argument; "%" would begin a field code.
std::string execArgument(const std::string& path) {
    return '"' + escaped(escaped(path, "%", "%"), "\"`$\\", "\\") + '"';
}

// KDE's programs look for the first word as it stands, with each "%" doubled.
const std::string startByShell = R"(/bin/sh -c "exec \"\$0\" \"\$@\"" )";

bool isPlainText(const std::string& path) {
    return isWellFormedUtf8(path) && std::ranges::none_of(path, [](char each) {
               return static_cast<unsigned char>(each) < ' ' || each == '\x7f';
           });
}

} // namespace

Result<std::string> quotedProgram(const std::string& path, EntryFormat format) {
    if (format == EntryFormat::Shell)
        return shellWord(path);
    if (!isPlainText(path))
        return Error{ErrorCode::InvalidArgument, "quote", path, 0};
    std::string argument = execArgument(path);
    if (format == EntryFormat::KeyFile && path.find('%') != std::string::npos)
        argument = startByShell + argument;
    if (format == EntryFormat::KeyFile)
        return escaped(argument, "\\", "\\");
    std::string text;
    appendXmlText(text, argument);
    return text;
}

} // namespace veilkeep
