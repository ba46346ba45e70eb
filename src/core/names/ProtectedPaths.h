#pragma once

#include "core/names/LinuxProtectedPaths.h"
#include "core/names/ProtectedListPredicate.h"

#include <string>

namespace veilkeep {

// What must never be hidden: the two lists together. A path is compared by its text and with the links of its
// parent followed; its last component never is. Usable from any thread.
class ProtectedPaths {
public:
    explicit ProtectedPaths(LinuxProtectedPaths::Surroundings surroundings);

    const ProtectedListPredicate& predicate() const { return m_predicate; }

    bool contains(const std::string& path) const;

private:
    PathForms formsOf(const std::string& path) const;

    std::string m_home;
    std::string m_resolvedHome;
    ProtectedListPredicate m_predicate;
    LinuxProtectedPaths m_linuxPaths;
};

} // namespace veilkeep
