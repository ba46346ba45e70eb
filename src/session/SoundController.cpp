#include "session/SoundController.h"

#include "core/base/PathText.h"
#include "core/log/Log.h"
#include "core/storage/DefaultsKeys.h"

#include <unistd.h>

#include <utility>

namespace veilkeep {
namespace {

constexpr std::pair<const char*, const char*> sounds[] = {
    {"DropSound", "drop.aif"},
    {"HideSound", "hideUnhide.aif"},
    {"PanelSound", "panel.aif"},
    {"AutoHideSound", "autohide.aif"},
};

SoundController* shared = nullptr;

} // namespace

SoundController::SoundController(const std::string& folder, UserDefaults& defaults, SoundPlayer& player)
    : m_defaults(defaults), m_player(player) {
    for (const auto& [key, file] : sounds)
        if (const std::string path = joinPath(folder, file); ::access(path.c_str(), R_OK) == 0)
            m_sounds.emplace(key, path);
    if (const auto stored = m_defaults.storeIfAbsent(defaultsKey::playSounds, true); !stored)
        logError("That sounds are played is not stored", stored.error());
    shared = this;
}

SoundController::~SoundController() {
    if (shared == this)
        shared = nullptr;
}

SoundController* SoundController::sharedInstance() {
    return shared;
}

void SoundController::playSound(const char* key) {
    const auto sound = m_sounds.find(key);
    if (sound != m_sounds.end() && m_defaults.boolean(defaultsKey::playSounds).value_or(true))
        m_player.play(sound->second);
}

} // namespace veilkeep
