#include "session/ProcessNote.h"

#include "core/base/PathText.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/FileLock.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/log/Log.h"
#include "session/CrashHandler.h"
#include "session/CrashNote.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <iterator>

namespace veilkeep {
namespace {

const std::string prefix = "Running-";

bool hasName(int file) {
    struct stat status = {};
    return ::fstat(file, &status) == 0 && status.st_nlink > 0;
}

// Until it is locked it looks as if its process were gone, and may be taken by one that starts meanwhile.
UniqueFd makeNote(const std::string& path) {
    constexpr int mostTries = 5;
    constexpr std::chrono::milliseconds wait(1000); // for whoever takes it
    for (int tries = 0; tries < mostTries; ++tries) {
        ::unlink(path.c_str());
        UniqueFd file(
            ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_APPEND | O_CLOEXEC, 0600));
        if (!file)
            break;
        if (lockExclusively(file.get(), path, wait) && hasName(file.get()))
            return file;
    }
    ::unlink(path.c_str());
    return {};
}

void takeNote(const std::string& path, const std::string& crash) {
    const UniqueFd file(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file || ::flock(file.get(), LOCK_EX | LOCK_NB) != 0 || !hasName(file.get()))
        return; // it runs, or has ended meanwhile
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
    m_file = makeNote(m_path);
    if (!m_file)
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
