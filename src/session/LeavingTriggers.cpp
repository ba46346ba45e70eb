#include "session/LeavingTriggers.h"

#include "core/storage/DefaultsKeys.h"

namespace veilkeep {
namespace {

const char* keyOf(Absence kind) {
    switch (kind) {
    case Absence::Sleep:
        return defaultsKey::hideOnSleep;
    case Absence::Lock:
        return defaultsKey::hideOnLock;
    case Absence::Session:
        break;
    }
    return defaultsKey::hideOnSessionSwitch;
}

} // namespace

bool hidesOn(Absence kind, const UserDefaults& defaults) {
    return defaults.boolean(keyOf(kind)).value_or(true);
}

bool hidesOnQuit(const UserDefaults& defaults) {
    return defaults.boolean(defaultsKey::hideOnQuit).value_or(true);
}

} // namespace veilkeep
