#pragma once

#include "core/storage/UserDefaults.h"
#include "platform/Sounds.h"

#include <map>
#include <string>

namespace veilkeep {

// The program's sounds, from a folder of sound files; a file that is missing is silent. Plays as long as the
// default "PlaySounds" is true, and stores that as true where it has no value. Main thread.
class SoundController : public Sounds {
public:
    // Neither is owned.
    SoundController(const std::string& folder, UserDefaults& defaults, SoundPlayer& player);
    ~SoundController() override;
    SoundController(const SoundController&) = delete;
    SoundController& operator=(const SoundController&) = delete;

    static SoundController* sharedInstance(); // null where none was made

    void playSound(const char* key) override;

private:
    UserDefaults& m_defaults;
    SoundPlayer& m_player;
    std::map<std::string, std::string> m_sounds; // paths by their keys
};

} // namespace veilkeep
