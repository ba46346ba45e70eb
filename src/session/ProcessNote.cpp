#include "session/ProcessNote.h"

#include "core/base/PathText.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/log/Log.h"
#include "session/CrashHandler.h"
#include "session/CrashNote.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <iterator>

namespace veilkeep {
namespace {

const std::string prefix = "Running-";

void takeNote(const std::string& path, const std::string& crash) {
    const UniqueFd file(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file || ::flock(file.get(), LOCK_EX | LOCK_NB) != 0)
        return; // it runs
    const auto text = readWholeFile(path, CrashNote::maximumSize);
    if (text && CrashNote::parse(*text).isOfCrash() && std::rename(path.c_str(), crash.c_str()) == 0)
        return;
    if (::unlink(path.c_str()) != 0)
        logError("What a process left is not removed", Error::system("unlink", path, errno));
}

} // namespace

ProcessNote::ProcessNote(const std::string& stateDirectory)
    : m_path(joinPath(stateDirectory, prefix + std::to_string(::getpid()))) {
    if (stateDirectory.empty() || !makeDirectories(stateDirectory, 0700))
        return; // RunNote says so, and what runs without a list is short
    ::unlink(m_path.c_str());
    m_file.reset(
        ::open(m_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_APPEND | O_CLOEXEC, 0600));
    if (!m_file || ::flock(m_file.get(), LOCK_EX | LOCK_NB) != 0)
        return;
    const std::string beginning = CrashNote::beginning();
    if (::write(m_file.get(), beginning.data(), beginning.size()) == std::ssize(beginning))
        crashHandler::install(m_file.get());
}

ProcessNote::~ProcessNote() {
    if (!m_file)
        return;
    crashHandler::remove();
    ::unlink(m_path.c_str());
}

void ProcessNote::takeOthers(const std::string& stateDirectory, const std::string& crash) {
    for (const std::string& name : entryNamesIn(stateDirectory))
        if (name.starts_with(prefix))
            takeNote(joinPath(stateDirectory, name), crash);
}

} // namespace veilkeep
