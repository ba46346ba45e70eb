#include "worker/TraceCleaning.h"

#include "core/base/Error.h"
#include "core/environment/Bundle.h"
#include "core/log/Log.h"
#include "worker/TraceLook.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace veilkeep {
namespace {

bool variableIs(const char* name, std::string_view value) {
    const char* set = std::getenv(name);
    return set && set == value;
}

// As long as nobody can be asked, no answer is a yes.
bool cleaningIsWanted() {
    return !variableIs("VEILKEEP_NOBODY_THERE", "1") && !variableIs("VEILKEEP_CLEAN_RECENT_ITEMS", "0");
}

bool isDirectory(const std::string& path) {
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

void useCleanSignals(posix_spawnattr_t& attributes) {
    sigset_t none, restored;
    ::sigemptyset(&none);
    ::sigemptyset(&restored);
    ::sigaddset(&restored, SIGPIPE);
    ::sigaddset(&restored, SIGXFSZ);
    ::posix_spawnattr_setsigmask(&attributes, &none);
    ::posix_spawnattr_setsigdefault(&attributes, &restored);
    ::posix_spawnattr_setflags(&attributes,
                               POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSID);
}

// It holds nothing that somebody may wait for: no descriptor of this process, no working directory, no
// terminal. The system reaps it after this process has ended. 0 or errno.
int startAlone(const std::string& program, const std::string& argument) {
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawnattr_init(&attributes);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
    ::posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    ::posix_spawn_file_actions_addchdir_np(&actions, "/");
    useCleanSignals(attributes);

    std::string name = program, path = argument;
    char* const arguments[] = {name.data(), path.data(), nullptr};
    pid_t child = -1;
    const int error = ::posix_spawn(&child, program.c_str(), &actions, &attributes, arguments, environ);
    ::posix_spawn_file_actions_destroy(&actions);
    ::posix_spawnattr_destroy(&attributes);
    return error;
}

} // namespace

void haveTracesCleaned(const std::string& visiblePath, const std::string& hiddenPath) {
    if (!cleaningIsWanted() || !mayHaveTraces(visiblePath, isDirectory(hiddenPath)))
        return;
    const std::string program = bundledProgramPath(applicationBundlePath(), "cloakTraces");
    if (const int error = startAlone(program, visiblePath))
        logError("Traces of a hidden item were not cleaned", Error::system("posix_spawn", program, error));
}

} // namespace veilkeep
