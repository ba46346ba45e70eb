#pragma once

#include "platform/Sounds.h"

#include <QString>

#include <map>
#include <memory>
#include <optional>
#include <string>

class QProcess;

namespace veilkeep {

// Plays by the desktop's own player, one process a file, which is ended with this object. Silent where there
// is no such player. Main thread.
class ProcessSoundPlayer : public SoundPlayer {
public:
    struct End {
        void operator()(QProcess* process) const;
    };

    ProcessSoundPlayer();
    ~ProcessSoundPlayer() override;

    void play(const std::string& path) override;

private:
    const QString& player(); // empty where there is none

    std::optional<QString> m_player; // once it was looked for
    std::map<std::string, std::unique_ptr<QProcess, End>> m_playing;
};

} // namespace veilkeep
