#include "widgets/preview/ThumbnailerRun.h"

#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/environment/XdgDirectories.h"
#include "core/filesystem/Directories.h"
#include "core/process/SpawnSettings.h"
#include "widgets/preview/ImageDecoder.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace veilkeep {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::string_view directoryPrefix = "veilkeep-preview-";

void removeWhole(const std::string& path) {
    std::error_code ignored; // there is nobody to be told
    std::filesystem::remove_all(path, ignored);
}

// Held as long as the directory is in use; none where somebody holds it already.
UniqueFd lockOn(const std::string& directory) {
    UniqueFd lock(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    return lock && ::flock(lock.get(), LOCK_EX | LOCK_NB) == 0 ? std::move(lock) : UniqueFd();
}

// Of a program that was killed.
void removeLeftovers(const std::string& base) {
    for (const std::string& name : entryNamesIn(base))
        if (const std::string path = joinPath(base, name); name.starts_with(directoryPrefix) && lockOn(path))
            removeWhole(path);
}

// Of mode 0700; removed with all that is in it.
class PrivateDirectory {
public:
    PrivateDirectory() {
        const XdgDirectories directories = XdgDirectories::current();
        std::string base = directories.runtimeDir;
        if (base.empty()) {
            base = joinPath(directories.cacheHome, "Veilkeep");
            if (!makeDirectories(base, 0700))
                return;
        }
        static std::mutex oneAtATime; // what is made but not locked yet is no leftover
        const std::lock_guard guard(oneAtATime);
        removeLeftovers(base);
        std::string path = joinPath(base, std::string(directoryPrefix) + "XXXXXX");
        if (!::mkdtemp(path.data()))
            return;
        m_path = path;
        m_lock = lockOn(path);
    }
    ~PrivateDirectory() {
        if (!m_path.empty())
            removeWhole(m_path);
    }
    PrivateDirectory(const PrivateDirectory&) = delete;
    PrivateDirectory& operator=(const PrivateDirectory&) = delete;

    const std::string& path() const { return m_path; } // empty where none could be made

private:
    std::string m_path;
    UniqueFd m_lock;
};

// Whatever the program would remember it remembers in the directory; no other program is asked for help.
std::vector<std::string> environmentWithin(const std::string& directory) {
    constexpr std::array<std::string_view, 7> moved{"HOME",           "TMPDIR",         "XDG_CACHE_HOME",
                                                    "XDG_DATA_HOME",  "XDG_STATE_HOME", "XDG_CONFIG_HOME",
                                                    "XDG_RUNTIME_DIR"};
    std::vector<std::string> environment{"DBUS_SESSION_BUS_ADDRESS=disabled:"};
    for (char* const* variable = environ; *variable; ++variable) {
        const std::string_view name =
            std::string_view(*variable).substr(0, std::string_view(*variable).find('='));
        if (name != "DBUS_SESSION_BUS_ADDRESS" && std::ranges::find(moved, name) == moved.end())
            environment.emplace_back(*variable);
    }
    for (const std::string_view name : moved)
        environment.push_back(std::string(name) + "=" + directory);
    return environment;
}

// A child in a session of its own: it and what it starts are ended together.
class Child {
public:
    explicit Child(pid_t id) : m_id(id), m_descriptor(static_cast<int>(::syscall(SYS_pidfd_open, id, 0))) {}
    ~Child() {
        ::kill(-m_id, SIGKILL);
        retryOnInterrupt([&] { return ::waitpid(m_id, nullptr, 0); });
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    // True when it ended by itself, until then and before somebody stopped it.
    bool endsBefore(Clock::time_point deadline, const WorkStop& stop) const {
        std::array<pollfd, 2> events{{{m_descriptor.get(), POLLIN, 0}, {stop.descriptor(), POLLIN, 0}}};
        while (m_descriptor && !stop.isStopped()) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
            const int ready =
                ::poll(events.data(), events.size(), static_cast<int>(std::max<long>(0, left.count())));
            if (ready == 0 || (ready < 0 && errno != EINTR))
                return false;
            if (ready > 0 && events[0].revents != 0)
                return true;
        }
        return false;
    }

private:
    pid_t m_id;
    UniqueFd m_descriptor;
};

// Through setpriv, where the system has it, the child ends with this process even when that is killed.
std::vector<std::string> commandFor(const Thumbnailer& thumbnailer, std::vector<std::string> arguments) {
    constexpr const char* setpriv = "/usr/bin/setpriv";
    arguments.insert(arguments.begin(), thumbnailer.command.front());
    if (::access(setpriv, X_OK) == 0)
        arguments.insert(arguments.begin(), {setpriv, "--pdeathsig", "KILL", "--"});
    return arguments;
}

std::optional<pid_t> start(std::vector<std::string> command, const std::string& directory) {
    SpawnSettings settings;
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        settings.openNullDevice(standard);
    settings.closeOthers();
    settings.startIn(directory);
    settings.useOwnSession();
    settings.useCleanSignals(false);
    const std::string program = command.front();
    command.erase(command.begin());
    pid_t child = -1;
    const std::vector<std::string> environment = environmentWithin(directory);
    return settings.spawn(child, program, command, pointersTo(environment).data()) == 0 ? std::optional(child)
                                                                                        : std::nullopt;
}

bool makeEmptyFile(const std::string& path) {
    return static_cast<bool>(UniqueFd(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600)));
}

} // namespace

QImage imageByThumbnailer(const Thumbnailer& thumbnailer, const std::string& path, int size,
                          std::chrono::milliseconds limit, const WorkStop& stop) {
    const PrivateDirectory directory;
    const std::string output = joinPath(directory.path(), "image.png");
    if (directory.path().empty() || !makeEmptyFile(output))
        return {};
    const auto command = commandFor(thumbnailer, thumbnailerArguments(thumbnailer, path, output, size));
    const std::optional<pid_t> started = start(command, directory.path());
    if (!started || !Child(*started).endsBefore(Clock::now() + limit, stop))
        return {};
    return decodeImageFile(OpenedItem(output), {size, size}, stop);
}

} // namespace veilkeep
