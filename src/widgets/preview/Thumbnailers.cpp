#include "widgets/preview/Thumbnailers.h"

#include "core/base/FileUri.h"
#include "core/base/PathText.h"
#include "core/environment/XdgDirectories.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ReadWholeFile.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace veilkeep {
namespace {

constexpr std::string_view fileSuffix = ".thumbnailer";
constexpr std::size_t mostBytes = std::size_t{64} << 10;

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == text.npos ? std::string_view()
                              : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        if (const std::string_view part = trimmed(text.substr(0, end)); !part.empty())
            parts.push_back(part);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

// The entries of the one group that counts.
std::unordered_map<std::string, std::string_view> entriesIn(std::string_view text) {
    std::unordered_map<std::string, std::string_view> entries;
    bool isInGroup = false;
    for (const std::string_view line : split(text, '\n')) {
        if (line.front() == '[')
            isInGroup = line == "[Thumbnailer Entry]";
        else if (const std::size_t equals = line.find('='); isInGroup && equals != line.npos)
            entries.emplace(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
    }
    return entries;
}

// Blanks part words; quotes of either kind keep them together, a backslash takes the next character as it is
// but within single quotes. Empty where a quote stays open.
std::vector<std::string> wordsOf(std::string_view command) {
    std::vector<std::string> words;
    bool isInWord = false;
    char quote = 0;
    for (std::size_t at = 0; at < command.size(); ++at) {
        const char each = command[at];
        if (quote == 0 && (each == ' ' || each == '\t')) {
            isInWord = false;
            continue;
        }
        if (!isInWord)
            words.emplace_back();
        isInWord = true;
        if (each == quote)
            quote = 0;
        else if (quote == 0 && (each == '"' || each == '\''))
            quote = each;
        else if (each == '\\' && quote != '\'' && at + 1 < command.size())
            words.back() += command[++at];
        else
            words.back() += each;
    }
    return quote == 0 ? words : std::vector<std::string>();
}

bool isProgram(const std::string& path) {
    return ::access(path.c_str(), X_OK) == 0;
}

// Empty where it is not installed.
std::string programPath(std::string_view name) {
    if (name.starts_with('/'))
        return isProgram(std::string(name)) ? std::string(name) : std::string();
    const char* const path = ::getenv("PATH");
    if (name.find('/') == name.npos)
        for (const std::string_view directory : split(path ? path : "/usr/local/bin:/usr/bin:/bin", ':'))
            if (const std::string program = joinPath(directory, name);
                directory.starts_with('/') && isProgram(program))
                return program;
    return {};
}

std::string expanded(const std::string& word, const std::string& path, const std::string& output, int size) {
    std::string text;
    for (std::size_t at = 0; at < word.size(); ++at) {
        if (word[at] != '%' || at + 1 == word.size()) {
            text += word[at];
            continue;
        }
        const char code = word[++at];
        if (code == 'i')
            text += path;
        else if (code == 'u')
            text += fileUri(path, UriSpelling::GLib);
        else if (code == 'o')
            text += output;
        else if (code == 's')
            text += std::to_string(size);
        else if (code == '%')
            text += '%';
    }
    return text;
}

} // namespace

std::optional<Thumbnailer> thumbnailerFrom(std::string_view text) {
    auto entries = entriesIn(text);
    Thumbnailer thumbnailer{.command = wordsOf(entries["Exec"]), .mimeTypes = {}};
    const std::string_view needed = entries["TryExec"];
    if (thumbnailer.command.empty() || (!needed.empty() && programPath(needed).empty()))
        return std::nullopt;
    thumbnailer.command.front() = programPath(thumbnailer.command.front());
    if (thumbnailer.command.front().empty())
        return std::nullopt;
    for (const std::string_view mimeType : split(entries["MimeType"], ';'))
        thumbnailer.mimeTypes.emplace_back(mimeType);
    return thumbnailer;
}

std::vector<std::string> thumbnailerArguments(const Thumbnailer& thumbnailer, const std::string& path,
                                              const std::string& output, int size) {
    std::vector<std::string> arguments;
    for (std::size_t word = 1; word < thumbnailer.command.size(); ++word)
        arguments.push_back(expanded(thumbnailer.command[word], path, output, size));
    return arguments;
}

Thumbnailers::Thumbnailers() {
    const char* const shared = ::getenv("XDG_DATA_DIRS");
    m_directories.push_back(XdgDirectories::current().dataHome);
    for (const std::string_view directory :
         split(shared && *shared ? shared : "/usr/local/share:/usr/share", ':'))
        m_directories.emplace_back(directory);
}

const Thumbnailer* Thumbnailers::forMimeType(const std::string& mimeType) const {
    std::call_once(m_isRead, [this] { read(); });
    const auto found = m_byMimeType.find(mimeType);
    return found == m_byMimeType.end() ? nullptr : &found->second;
}

void Thumbnailers::read() const {
    for (const std::string& base : m_directories) {
        const std::string directory = joinPath(base, "thumbnailers");
        std::vector<std::string> names = entryNamesIn(directory);
        std::ranges::sort(names);
        for (const std::string& name : names) {
            if (!name.ends_with(fileSuffix) || !base.starts_with('/'))
                continue;
            const auto text = readWholeFile(joinPath(directory, name), mostBytes);
            const auto thumbnailer = text ? thumbnailerFrom(*text) : std::nullopt;
            if (!thumbnailer)
                continue;
            for (const std::string& mimeType : thumbnailer->mimeTypes)
                m_byMimeType.emplace(mimeType, *thumbnailer);
        }
    }
}

} // namespace veilkeep
