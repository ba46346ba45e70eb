#include "platform/linux/ProcessSoundPlayer.h"

#include "core/log/Log.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include <initializer_list>

namespace veilkeep {
namespace {

QString findPlayer() {
    for (const char* const name : {"pw-play", "paplay"})
        if (const QString path = QStandardPaths::findExecutable(QLatin1String(name)); !path.isEmpty())
            return path;
    logLine("No sounds: there is neither pw-play nor paplay.");
    return {};
}

std::unique_ptr<QProcess, ProcessSoundPlayer::End> makeProcess() {
    std::unique_ptr<QProcess, ProcessSoundPlayer::End> process(new QProcess);
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    QObject::connect(process.get(), &QProcess::errorOccurred, [](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            logLine("A sound's player could not be started.");
    });
    return process;
}

} // namespace

// A killed process is gone at once.
void ProcessSoundPlayer::End::operator()(QProcess* process) const {
    process->kill();
    process->waitForFinished();
    delete process;
}

ProcessSoundPlayer::ProcessSoundPlayer() = default;

ProcessSoundPlayer::~ProcessSoundPlayer() = default;

void ProcessSoundPlayer::play(const std::string& path) {
    if (player().isEmpty())
        return;
    auto& process = m_playing[path];
    process = makeProcess();
    process->start(player(), {QFile::decodeName(path.c_str())});
}

const QString& ProcessSoundPlayer::player() {
    if (!m_player)
        m_player = findPlayer();
    return *m_player;
}

} // namespace veilkeep
