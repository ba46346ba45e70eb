#include "ctl/GroupWords.h"

#include "core/filesystem/ItemPath.h"
#include "format/ErrorText.h"
#include "format/PrintableName.h"
#include "requests/RequestRules.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>

namespace veilkeep {
namespace {

using Words = std::span<const std::string>;

struct ActionSyntax {
    const char* action;
    std::size_t leastWords, mostWords; // after the action
    const char* arguments;
};

constexpr ActionSyntax actions[] = {
    {groupAction::add, 0, 1, "[NAME]"},           {groupAction::remove, 1, 1, "NAME"},
    {groupAction::rename, 2, 2, "NAME NEWNAME"},  {groupAction::icon, 2, 2, "NAME ICON"},
    {groupAction::autoHide, 2, 2, "NAME on|off"}, {groupAction::order, 2, 3, "NAME POSITION|before OTHER"},
};

QByteArray bytes(const std::string& word) {
    return QByteArray::fromStdString(word);
}

// The name of one of the program's own icons has no slash.
std::string putIcon(const std::string& icon, QVariantMap& options) {
    if (icon.find('/') == std::string::npos) {
        options.insert(QLatin1String(requestOption::icon), bytes(icon));
        return {};
    }
    const auto path = absoluteItemPath(icon);
    if (!path)
        return quotedName(icon) + ": " + errorReason(path.error()).toStdString();
    options.insert(QLatin1String(requestOption::icon), bytes(*path));
    return {};
}

std::string putAutoHide(const std::string& word, QVariantMap& options) {
    options.insert(QLatin1String(requestOption::autoHide), word == "on");
    return word == "on" || word == "off" ? std::string() : quotedName(word) + " is neither 'on' nor 'off'";
}

std::string putPlace(Words words, QVariantMap& options) {
    if (words.size() == 2) {
        options.insert(QLatin1String(requestOption::before), bytes(words[1]));
        return words[0] == "before" ? std::string() : quotedName(words[0]) + " is not 'before'";
    }
    qlonglong position = 0;
    const char* const end = words[0].data() + words[0].size();
    const auto [parsed, error] = std::from_chars(words[0].data(), end, position);
    if (error != std::errc() || parsed != end || position < 1)
        return quotedName(words[0]) + " is no position; the first one is 1";
    options.insert(QLatin1String(requestOption::position), position);
    return {};
}

// What follows the group's name; a sentence about the mistake.
std::string putRest(std::string_view action, Words rest, QVariantMap& options) {
    if (action == groupAction::rename)
        options.insert(QLatin1String(requestOption::newName), bytes(rest[0]));
    if (action == groupAction::icon)
        return putIcon(rest[0], options);
    if (action == groupAction::autoHide)
        return putAutoHide(rest[0], options);
    return action == groupAction::order ? putPlace(rest, options) : std::string();
}

} // namespace

std::variant<QVariantMap, std::string> groupOptions(std::span<const std::string> words) {
    if (words.empty())
        return "what to do with a group is missing";
    const auto syntax =
        std::ranges::find_if(actions, [&](const ActionSyntax& each) { return each.action == words.front(); });
    if (syntax == std::end(actions))
        return "'group' does not know " + quotedName(words.front());
    const Words arguments = words.subspan(1);
    if (arguments.size() < syntax->leastWords || arguments.size() > syntax->mostWords)
        return std::string("usage: veilkeepctl group ") + syntax->action + " " + syntax->arguments;
    QVariantMap options{{QLatin1String(requestOption::action), QLatin1String(syntax->action)}};
    if (arguments.empty())
        return options;
    options.insert(QLatin1String(requestOption::group), bytes(arguments[0]));
    std::string mistake = putRest(syntax->action, arguments.subspan(1), options);
    if (!mistake.empty())
        return mistake;
    return options;
}

} // namespace veilkeep
