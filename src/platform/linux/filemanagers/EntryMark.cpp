#include "platform/linux/filemanagers/EntryMark.h"

#include "core/base/Md5.h"

#include <algorithm>
#include <charconv>
#include <utility>
#include <vector>

namespace veilkeep {
namespace {

constexpr std::string_view identifier = "com.ostrel.Veilkeep";
constexpr std::string_view lineBegin = "# com.ostrel.Veilkeep "; // what is ours alone has such comments

std::vector<std::string_view> wordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        words.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

} // namespace

std::string EntryMark::text() const {
    return std::string(identifier) + " " + (version.empty() ? "0" : version) + " " +
           std::to_string(directories) + " " + digest;
}

std::optional<EntryMark> EntryMark::ofText(std::string_view text) {
    const auto words = wordsOf(text);
    if (words.size() != 4 || words[0] != identifier)
        return std::nullopt;
    EntryMark mark{std::string(words[1]), 0, std::string(words[3])};
    const auto [end, error] =
        std::from_chars(words[2].data(), words[2].data() + words[2].size(), mark.directories);
    const bool isNumber = error == std::errc() && end == words[2].data() + words[2].size();
    return isNumber ? std::optional(mark) : std::nullopt;
}

bool MarkedContent::isUnchanged() const {
    return mark.digest == md5(unmarked);
}

std::string MarkedContent::written(const std::string& unmarked, EntryMark mark) {
    mark.digest = md5(unmarked);
    std::string content = unmarked;
    content.replace(content.find(placeholder), placeholder.size(), mark.text());
    return content;
}

// A mark that somebody damaged tells at least whose the file was.
std::optional<MarkedContent> MarkedContent::of(const std::string& content) {
    const std::size_t line = content.find(lineBegin);
    if (line == std::string::npos || (line > 0 && content[line - 1] != '\n'))
        return std::nullopt;
    const std::size_t begin = line + 2;
    const std::size_t end = std::min(content.find('\n', begin), content.size());
    MarkedContent found;
    found.mark =
        EntryMark::ofText(std::string_view(content).substr(begin, end - begin)).value_or(EntryMark());
    found.unmarked = std::string(content).replace(begin, end - begin, placeholder);
    return found;
}

} // namespace veilkeep
