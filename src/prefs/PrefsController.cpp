#include "prefs/PrefsController.h"

#include "core/log/Log.h"
#include "core/storage/DefaultsKeys.h"

namespace veilkeep {

bool PrefsController::needToCreateAutoHideExample() {
    if (m_defaults.contains(defaultsKey::autoHideExample))
        return false;
    m_defaults.set(defaultsKey::autoHideExample, std::int64_t{1});
    const auto stored = m_defaults.synchronize();
    if (!stored)
        logError("That the example group was made is not stored", stored.error());
    return stored.has_value();
}

bool PrefsController::showsMenuIcon() {
    if (const auto stored = m_defaults.storeIfAbsent(defaultsKey::showMenuIcon, true); !stored)
        logError("That the icon is shown is not stored", stored.error());
    return m_defaults.boolean(defaultsKey::showMenuIcon).value_or(true);
}

} // namespace veilkeep
