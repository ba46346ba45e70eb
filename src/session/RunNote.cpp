#include "session/RunNote.h"

#include "core/base/PathText.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/log/Log.h"
#include "session/CrashHandler.h"
#include "session/ProcessNote.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <utility>

namespace veilkeep {
namespace {

void logTrouble(const Error& error) {
    logError("A crash of this run would not be noticed", error);
}

} // namespace

RunNote::RunNote(const std::string& stateDirectory)
    : m_running(joinPath(stateDirectory, "Running")), m_crash(joinPath(stateDirectory, "Crash Note")) {
    const auto made = stateDirectory.empty() ? Result<void>(Error::system("open", {}, ENOENT))
                                             : makeDirectories(stateDirectory, 0700);
    if (made) {
        ProcessNote::takeOthers(stateDirectory, m_crash);
        lookAtLastRun();
        begin();
    } else {
        logTrouble(made.error());
    }
}

RunNote::~RunNote() {
    if (!m_file)
        return;
    crashHandler::remove();
    ::unlink(m_running.c_str());
}

void RunNote::lookAtLastRun() {
    if (const auto running = readWholeFile(m_running, CrashNote::maximumSize)) {
        const CrashNote note = CrashNote::parse(*running);
        if (!note.isOfCrash())
            logLine("The last run was cut off: it was ended by force, or the computer was");
        else if (std::rename(m_running.c_str(), m_crash.c_str()) != 0)
            logError("The note of a crash is lost", Error::system("rename", m_running, errno));
    }
    const auto crash = readWholeFile(m_crash, CrashNote::maximumSize);
    if (!crash)
        return;
    m_lastCrash = CrashNote::parse(*crash);
    logLine("A former run crashed: " + m_lastCrash->reason());
}

void RunNote::begin() {
    ::unlink(m_running.c_str());
    m_file.reset(
        ::open(m_running.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_APPEND | O_CLOEXEC, 0600));
    if (!m_file)
        return logTrouble(Error::system("open", m_running, errno));
    const std::string beginning = CrashNote::beginning();
    if (::write(m_file.get(), beginning.data(), beginning.size()) != std::ssize(beginning))
        logTrouble(Error::system("write", m_running, errno));
    crashHandler::install(m_file.get());
}

std::optional<CrashNote> RunNote::takeLastCrash() {
    return std::exchange(m_lastCrash, std::nullopt);
}

void RunNote::forgetLastCrash() {
    if (::unlink(m_crash.c_str()) != 0)
        logError("The note of a crash stays", Error::system("unlink", m_crash, errno));
}

} // namespace veilkeep
