#include "core/names/ProtectedPaths.h"

#include "core/base/PathText.h"
#include "core/filesystem/ResolvedPath.h"

namespace veilkeep {

ProtectedPaths::ProtectedPaths(LinuxProtectedPaths::Surroundings surroundings)
    : m_home(surroundings.home),
      m_resolvedHome(LinkResolver().resolved(m_home)),
      m_predicate(m_home),
      m_linuxPaths(std::move(surroundings)) {}

bool ProtectedPaths::contains(const std::string& path) const {
    const auto isListed = [this](const std::string& text) {
        return text == "/" || m_predicate.matches(text + "/");
    };
    if (isListed(path))
        return true;
    const PathForms forms = formsOf(path);
    if (!forms.given.starts_with('/'))
        return false; // empty, or below a working directory that is gone: nothing can be there
    return isListed(forms.given) || (forms.named != forms.given && isListed(forms.named)) ||
           m_linuxPaths.contains(forms);
}

// A home that is reached through a link ("/home" may be one to "/var/home") would else lie in a system folder
// with all that is in it.
PathForms ProtectedPaths::formsOf(const std::string& path) const {
    PathForms forms;
    forms.resolved = cleanPath(withResolvedParent(path).value_or(path));
    forms.given = path.starts_with('/') ? cleanPath(path) : forms.resolved;
    forms.named = forms.resolved;
    if (!m_home.empty() && m_resolvedHome != m_home && isSameOrBelow(forms.resolved, m_resolvedHome))
        forms.named.replace(0, m_resolvedHome.size(), m_home);
    return forms;
}

} // namespace veilkeep
