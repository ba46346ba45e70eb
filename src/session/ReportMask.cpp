#include "session/ReportMask.h"

#include "format/PrintableName.h"

#include <algorithm>
#include <cstring>

namespace veilkeep {
namespace {

constexpr std::string_view pathMask = "<path>";
constexpr std::string_view nameMask = "<name>";
constexpr std::size_t shortestName = 2;
constexpr int systemErrors = 134;

bool isQuote(std::string_view text) {
    constexpr std::string_view quotes[] = {"'", "\"", "\u201c", "\u201e", "\u2018", "\u00ab", "\u00bb"};
    return std::ranges::any_of(quotes, [&](std::string_view quote) { return text.starts_with(quote); });
}

bool beginsWord(std::string_view line, std::size_t position) {
    constexpr std::string_view before = " \t([{<=:,;'\"`|";
    return position == 0 || before.find(line[position - 1]) != std::string_view::npos;
}

std::size_t beginOfWord(std::string_view line, std::size_t position) {
    const std::size_t blank = line.find_last_of(" \t", position);
    return blank == std::string_view::npos ? 0 : blank + 1;
}

// ": No space left on device" where the line ends so, else nothing.
std::string_view systemReason(std::string_view line) {
    for (int number = 1; number < systemErrors; ++number) {
        const std::string reason = std::string(": ") + std::strerror(number);
        if (line.ends_with(reason))
            return line.substr(line.size() - reason.size());
    }
    return {};
}

// Where the path of an own file ends that begins there, or the same place.
std::size_t endOfOwnPath(std::string_view line, std::size_t begin, const std::string& bundle) {
    if (bundle.empty() || !line.substr(begin).starts_with(bundle + "/Contents/"))
        return begin;
    const std::size_t end = std::min(line.find_first_of(" \t:,;)]", begin + bundle.size()), line.size());
    return line.substr(begin, end - begin).find("/..") == std::string_view::npos ? end : begin;
}

// The first place from which on nothing of the line is to be shown, its end where there is none.
std::size_t beginOfSecret(std::string_view line, const std::string& bundle) {
    for (std::size_t position = 0; position < line.size(); ++position) {
        if (line[position] == '/') {
            const std::size_t end = endOfOwnPath(line, position, bundle);
            if (end == position)
                return beginOfWord(line, position);
            position = end - 1;
        } else if (isQuote(line.substr(position)) && beginsWord(line, position)) {
            return position;
        }
    }
    return line.size();
}

// A name may hold blanks, colons and quotes: where it ends cannot be told, so the line ends with it.
std::string maskedLine(std::string_view line, const std::string& bundle) {
    const std::size_t begin = beginOfSecret(line, bundle);
    std::string masked(line.substr(0, begin));
    if (begin == line.size())
        return masked;
    const bool isPath = line.find('/', begin) != std::string_view::npos;
    return masked.append(isPath ? pathMask : nameMask).append(systemReason(line.substr(begin)));
}

void replaceAll(std::string& text, const std::string& name) {
    for (std::size_t place = text.find(name); place != std::string::npos;
         place = text.find(name, place + nameMask.size()))
        text.replace(place, name.size(), nameMask);
}

// The longest first: one name may be a part of another.
std::string withoutNames(std::string text, std::vector<std::string> names) {
    std::ranges::sort(
        names, [](const std::string& left, const std::string& right) { return left.size() > right.size(); });
    for (const std::string& name : names) {
        if (name.size() < shortestName)
            continue;
        replaceAll(text, name);
        if (const std::string printed = printableName(name); printed != name)
            replaceAll(text, printed);
    }
    return text;
}

} // namespace

std::string maskedForReport(std::string_view text, const std::vector<std::string>& names,
                            const std::string& bundle) {
    std::string masked;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        masked += maskedLine(text.substr(0, end), bundle);
        if (end < text.size())
            masked += '\n';
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return withoutNames(std::move(masked), names);
}

} // namespace veilkeep
