#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace veilkeep {

// The list of system folders and standard folders of a user that are never hidden, written as one regular
// expression over a path followed by "/". The home directory goes into it unescaped, so what its characters
// mean in a regular expression they mean here; a home that makes the expression ill-formed is left out.
// Immutable; usable from any thread.
class ProtectedListPredicate {
public:
    explicit ProtectedListPredicate(std::string home);
    ProtectedListPredicate(ProtectedListPredicate&&) noexcept;
    ProtectedListPredicate& operator=(ProtectedListPredicate&&) noexcept;
    ~ProtectedListPredicate();

    // In effect for this home.
    const std::string& pattern() const { return m_pattern; }

    // Whether the pattern matches the whole text. Goes by bytes in every locale; "." also matches a line
    // break. Homes whose only special character is "." never cost the making of a regular expression.
    bool matches(std::string_view text) const;

private:
    class Expression;

    std::string m_home;
    std::string m_pattern;
    std::unique_ptr<Expression> m_expression; // only where the home needs one
};

} // namespace veilkeep
