#include "core/names/UserDirectories.h"

#include "core/base/PathText.h"
#include "core/base/TakeUntil.h"
#include "core/filesystem/ReadWholeFile.h"

#include <algorithm>
#include <optional>

namespace veilkeep {
namespace {

constexpr std::size_t largestFile = std::size_t{1} << 20;

void skipBlanks(std::string_view& line) {
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
}

bool skip(std::string_view& line, std::string_view text) {
    if (!line.starts_with(text))
        return false;
    line.remove_prefix(text.size());
    return true;
}

// XDG_…_DIR and the "=" after it.
bool skipVariable(std::string_view& line) {
    const std::string_view name = line.substr(0, line.find_first_of(" \t="));
    if (!name.starts_with("XDG_") || !name.ends_with("_DIR") || !skip(line, name))
        return false;
    skipBlanks(line);
    if (!skip(line, "="))
        return false;
    skipBlanks(line);
    return true;
}

// Up to the closing quote; a backslash takes the next character for itself.
std::string unquoted(std::string_view text) {
    std::string plain;
    for (std::size_t index = 0; index < text.size() && text[index] != '"'; ++index) {
        if (text[index] == '\\' && index + 1 < text.size())
            ++index;
        plain.push_back(text[index]);
    }
    return plain;
}

std::optional<std::string> directoryOfLine(std::string_view line, std::string_view home) {
    skipBlanks(line);
    if (!skipVariable(line) || !skip(line, "\""))
        return std::nullopt;
    const bool belowHome = skip(line, "$HOME");
    if (belowHome && home.empty())
        return std::nullopt;
    if (!line.starts_with('/') && !(belowHome && line.starts_with('"')))
        return std::nullopt;
    std::string directory = unquoted(line);
    return cleanPath(belowHome ? std::string(home) + directory : directory);
}

} // namespace

std::vector<std::string> parseUserDirectories(std::string_view content, std::string_view home) {
    std::vector<std::string> directories;
    while (!content.empty())
        if (auto directory = directoryOfLine(takeUntil('\n', content), home))
            directories.push_back(std::move(*directory));
    return directories;
}

std::vector<std::string> userDirectories(const std::string& configHome, const std::string& home) {
    const std::string path = joinPath(configHome, "user-dirs.dirs");
    const auto content = readWholeFile(path, largestFile);
    return content ? parseUserDirectories(*content, home) : std::vector<std::string>();
}

} // namespace veilkeep
