#include "core/names/ProtectedListPredicate.h"

#include "core/base/CLocaleScope.h"

#include <regex.h>

#include <algorithm>

namespace veilkeep {
namespace {

constexpr std::string_view systemFolders[] = {"/net/", "/tmp/",     "/var/",       "/cores/", "/private/",
                                              "/opt/", "/dev/",     "/sbin/",      "/bin/",   "/etc/",
                                              "/usr/", "/Library/", "/Developer/", "/System/"};
constexpr std::string_view standardFolders[] = {"/Applications", "/Desktop",   "/Sites",
                                                "/Public",       "/Pictures",  "/Music",
                                                "/Movies",       "/Downloads", "/Documents"};

std::string patternFor(const std::string& home) {
    std::string pattern =
        "^(/net/+.*)|^(/tmp/+.*)|^(/var/+.*)|^(/cores/+.*)|^(/private/+.*)|^(/opt/+.*)|^(/dev/+.*)"
        "|^(/sbin/+.*)|^(/bin/+.*)|^(/etc/+.*)|^(/usr/+.*)|^(/Library/+.*)|^(/Developer/+.*)|^(/System/+.*)";
    const bool withHome = !home.empty();
    if (withHome)
        pattern += "|^(" + home + "/Library/)";
    pattern += "|^/Volumes/*[^/]*/*$";
    if (withHome)
        pattern += "|^(" + home + ")$";
    pattern += "|^(/Users/*[^/]*/)$|^(/Applications/*)$";
    if (withHome)
        for (const std::string_view folder : standardFolders)
            pattern.append("|^(").append(home).append(folder).append("/*)$");
    return pattern;
}

bool isSlashes(std::string_view text) {
    return text.find_first_not_of('/') == std::string_view::npos;
}

bool removePrefix(std::string_view& text, std::string_view prefix) {
    if (!text.starts_with(prefix))
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

// "/*[^/]*" at the front; answers whether the second half took anything.
bool removeOneComponent(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of('/'), text.size()));
    const std::size_t length = std::min(text.find('/'), text.size());
    text.remove_prefix(length);
    return length > 0;
}

bool isVolume(std::string_view text) {
    if (!removePrefix(text, "/Volumes"))
        return false;
    removeOneComponent(text);
    return isSlashes(text);
}

bool isUser(std::string_view text) {
    if (!removePrefix(text, "/Users"))
        return false;
    const std::string_view whole = text;
    return removeOneComponent(text) ? text == "/" : !whole.empty();
}

bool matchesWithoutHome(std::string_view text) {
    const auto holdsText = [&](std::string_view folder) { return text.starts_with(folder); };
    return std::any_of(std::begin(systemFolders), std::end(systemFolders), holdsText) || isVolume(text) ||
           isUser(text) || (removePrefix(text, "/Applications") && isSlashes(text));
}

// The home is taken as an expression whose only special character is ".".
bool matchesHome(std::string_view text, std::string_view home) {
    const auto same = [](char expected, char byte) { return expected == '.' || expected == byte; };
    if (home.empty() || text.size() < home.size() ||
        !std::equal(home.begin(), home.end(), text.begin(), same))
        return false;
    const std::string_view rest = text.substr(home.size());
    if (rest.empty() || rest == "/Library/")
        return true;
    return std::any_of(std::begin(standardFolders), std::end(standardFolders), [&](std::string_view folder) {
        return rest.starts_with(folder) && isSlashes(rest.substr(folder.size()));
    });
}

bool needsExpression(std::string_view home) {
    return home.find_first_of("\\^$|()[]{}*+?") != std::string_view::npos;
}

} // namespace

class ProtectedListPredicate::Expression {
public:
    explicit Expression(const std::string& pattern) {
        const CLocaleScope cLocale;
        m_wellFormed = ::regcomp(&m_compiled, pattern.c_str(), REG_EXTENDED) == 0;
    }
    ~Expression() {
        if (m_wellFormed)
            ::regfree(&m_compiled);
    }
    Expression(const Expression&) = delete;
    Expression& operator=(const Expression&) = delete;

    bool isWellFormed() const { return m_wellFormed; }

    // POSIX finds the leftmost and there the longest match, which is the whole text if anything is.
    bool matchesWhole(const std::string& text) const {
        const CLocaleScope cLocale;
        regmatch_t match = {};
        return ::regexec(&m_compiled, text.c_str(), 1, &match, 0) == 0 && match.rm_so == 0 &&
               static_cast<std::size_t>(match.rm_eo) == text.size();
    }

private:
    regex_t m_compiled = {};
    bool m_wellFormed = false;
};

ProtectedListPredicate::ProtectedListPredicate(std::string home)
    : m_home(std::move(home)), m_pattern(patternFor(m_home)) {
    if (!needsExpression(m_home))
        return;
    m_expression = std::make_unique<Expression>(m_pattern);
    if (m_expression->isWellFormed())
        return;
    m_expression.reset();
    m_home.clear();
    m_pattern = patternFor(m_home);
}

ProtectedListPredicate::ProtectedListPredicate(ProtectedListPredicate&&) noexcept = default;
ProtectedListPredicate& ProtectedListPredicate::operator=(ProtectedListPredicate&&) noexcept = default;
ProtectedListPredicate::~ProtectedListPredicate() = default;

bool ProtectedListPredicate::matches(std::string_view text) const {
    if (matchesWithoutHome(text))
        return true;
    return m_expression ? m_expression->matchesWhole(std::string(text)) : matchesHome(text, m_home);
}

} // namespace veilkeep
