#include "prefs/LSUIElementManipulation.h"

#include "core/storage/DefaultsKeys.h"

namespace veilkeep {

LSUIElementManipulation::LSUIElementManipulation(UserDefaults& defaults, const BundleInfo& bundle)
    : m_defaults(defaults), m_whenAbsent(bundle.isUIElement()), m_isUIElement(willBeUIElement()) {}

bool LSUIElementManipulation::willBeUIElement() const {
    return m_defaults.boolean(defaultsKey::dockIconHidden).value_or(m_whenAbsent);
}

Result<void> LSUIElementManipulation::setShouldBeUIElement(bool isUIElement) {
    m_defaults.set(defaultsKey::dockIconHidden, isUIElement);
    auto stored = m_defaults.synchronize();
    if (!stored)
        m_defaults.discard(defaultsKey::dockIconHidden);
    return stored;
}

} // namespace veilkeep
