#pragma once

#include <string>

namespace veilkeep {

// Plays sound files. Main thread.
class SoundPlayer {
public:
    virtual ~SoundPlayer() = default;

    // Stops what plays of it and plays it from its start, without waiting for its end.
    virtual void play(const std::string& path) = 0;

protected:
    SoundPlayer() = default;
    SoundPlayer(const SoundPlayer&) = default;
    SoundPlayer& operator=(const SoundPlayer&) = default;
};

// The program's sounds by their keys, "AutoHideSound" and the like. Main thread.
class Sounds {
public:
    virtual ~Sounds() = default;

    virtual void playSound(const char* key) = 0; // nothing for a key that is not known

protected:
    Sounds() = default;
    Sounds(const Sounds&) = default;
    Sounds& operator=(const Sounds&) = default;
};

} // namespace veilkeep
