#include "worker/traces/RecentDocuments.h"

#include "core/base/FileUri.h"
#include "core/base/PathText.h"
#include "core/base/TakeUntil.h"
#include "core/environment/XdgDirectories.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ReadWholeFile.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>
#include <vector>

namespace veilkeep {
namespace {

constexpr std::size_t maximumSize = std::size_t{1} << 20;

std::string_view trimmed(std::string_view text) {
    const auto begin = std::min(text.find_first_not_of(" \t\r"), text.size());
    text.remove_prefix(begin);
    return text.substr(0, text.find_last_not_of(" \t\r") + 1);
}

struct Entry {
    std::string_view value;
    bool isExpanded = false; // variables in it stand for their values: the key ends with "[$e]"
};

std::optional<Entry> urlEntry(std::string_view text) {
    bool inGroup = false;
    while (!text.empty()) {
        const std::string_view line = takeUntil('\n', text);
        if (line.starts_with('['))
            inGroup = trimmed(line) == "[Desktop Entry]";
        const auto sign = line.find('=');
        if (!inGroup || sign == std::string_view::npos)
            continue;
        const std::string_view key = trimmed(line.substr(0, sign));
        const std::string_view options = key.substr(std::min(key.find("[$"), key.size()));
        if (key.substr(0, key.size() - options.size()) == "URL")
            return Entry{trimmed(line.substr(sign + 1)), options.find('e') != std::string_view::npos};
    }
    return std::nullopt;
}

std::string withoutBackslashes(std::string_view value) {
    constexpr std::string_view letters = "sntr\\", meanings = " \n\t\r\\";
    std::string plain;
    for (std::size_t index = 0; index < value.size(); ++index) {
        const auto letter = value[index] == '\\' && index + 1 < value.size() ? letters.find(value[index + 1])
                                                                             : std::string_view::npos;
        plain.push_back(letter == std::string_view::npos ? value[index] : meanings[letter]);
        index += letter == std::string_view::npos ? 0 : 1;
    }
    return plain;
}

std::string expanded(std::string_view value, const std::string& home) {
    const std::pair<std::string_view, std::string_view> meanings[] = {
        {"$$", "$"}, {"${HOME}", home}, {"$HOME", home}};
    std::string plain;
    while (!value.empty()) {
        const auto meaning =
            std::ranges::find_if(meanings, [&](const auto& pair) { return value.starts_with(pair.first); });
        const bool isOne = meaning != std::end(meanings);
        plain.append(isOne ? meaning->second : value.substr(0, 1));
        value.remove_prefix(isOne ? meaning->first.size() : 1);
    }
    return plain;
}

} // namespace

std::optional<std::string> pathOfRecentDocument(std::string_view text, const std::string& home) {
    const auto entry = urlEntry(text);
    if (!entry)
        return std::nullopt;
    std::string url = withoutBackslashes(entry->value);
    if (entry->isExpanded)
        url = expanded(url, home);
    return url.starts_with('/') ? url : pathOfFileUri(url);
}

Result<bool> removeRecentDocuments(const std::string& directory, TracedItems& items) {
    const std::string home = homeDirectory();
    bool anyRemoved = false;
    std::optional<Error> trouble;
    for (const std::string& name : entryNamesIn(directory)) {
        const std::string file = joinPath(directory, name);
        if (!name.ends_with(".desktop"))
            continue;
        const auto text = readWholeFile(file, maximumSize);
        const auto path = text ? pathOfRecentDocument(*text, home) : std::nullopt;
        if (!path || !items.contains(*path))
            continue;
        if (::unlink(file.c_str()) == 0)
            anyRemoved = true;
        else if (errno != ENOENT)
            trouble = Error::system("unlink", directory, errno); // the file's own name tells the item's
    }
    return trouble ? Result<bool>(*trouble) : anyRemoved;
}

} // namespace veilkeep
