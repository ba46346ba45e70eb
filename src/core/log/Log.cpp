#include "core/log/Log.h"

#include "core/base/Hexadecimal.h"
#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/base/Utf8.h"
#include "core/environment/XdgDirectories.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/FileLock.h"
#include "core/log/TimeText.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace veilkeep {
namespace {

bool isHarmless(const Utf8Character& character) {
    const char32_t code = character.codePoint;
    return character.valid && code >= 0x20 && !(code >= 0x7f && code <= 0x9f) && code != '\\';
}

std::string escaped(std::string_view text) {
    std::string harmless;
    harmless.reserve(text.size());
    while (!text.empty()) {
        const Utf8Character character = firstUtf8Character(text);
        const std::string_view bytes = text.substr(0, character.length);
        text.remove_prefix(character.length);
        if (isHarmless(character)) {
            harmless += bytes;
            continue;
        }
        for (const char byte : bytes)
            harmless += "\\x" + hexadecimalByte(byte);
    }
    return harmless;
}

std::string lineOf(std::string_view text) {
    std::string line = timeText(std::chrono::system_clock::now());
    line += ' ';
    line += std::to_string(::getpid());
    line += ' ';
    line += escaped(text.substr(0, Log::maximumTextSize));
    if (text.size() > Log::maximumTextSize)
        line += "[cut]";
    line += '\n';
    return line;
}

UniqueFd openLog(const std::string& path) {
    // O_NONBLOCK: a FIFO at the place must not hold anybody up.
    const auto open = [&] {
        return UniqueFd(retryOnInterrupt([&] {
            return ::open(path.c_str(),
                          O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC,
                          0600);
        }));
    };
    UniqueFd file = open();
    if (!file && errno == ENOENT && makeDirectories(directoryOf(path), 0700))
        file = open();
    return file;
}

bool isStillAt(const std::string& path, const struct stat& status) {
    struct stat present = {};
    return ::lstat(path.c_str(), &present) == 0 && present.st_ino == status.st_ino &&
           present.st_dev == status.st_dev;
}

// A line that a full disk has cut is taken out again, which only the holder of the lock may do.
void appendWhole(int file, const std::string& line, const struct stat& status, bool isLocked) {
    const ssize_t count = retryOnInterrupt([&] { return ::write(file, line.data(), line.size()); });
    if (isLocked && count >= 0 && static_cast<std::size_t>(count) < line.size() &&
        ::ftruncate(file, status.st_size) != 0)
        return; // part of a line stays: the disk is in trouble, and others will tell
}

enum class Attempt { Done, TurnedOver };

// The lock is that of the log file itself. Only its holder renames the file, and only while it is the log,
// so that a line goes into the log or, without the lock, at worst into what was the log a moment ago.
Attempt tryAppending(const std::string& path, const std::string& line, std::chrono::milliseconds lockWait) {
    const UniqueFd file = openLog(path);
    struct stat status = {};
    if (!file)
        return Attempt::Done;
    const bool isLocked = lockExclusively(file.get(), path, lockWait).has_value();
    if (::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return Attempt::Done;
    if (isLocked && !isStillAt(path, status))
        return Attempt::TurnedOver;
    const auto size = static_cast<std::size_t>(status.st_size);
    if (isLocked && size > 0 && size + line.size() > Log::turnOverSize)
        return ::rename(path.c_str(), (path + ".1").c_str()) == 0 ? Attempt::TurnedOver : Attempt::Done;
    appendWhole(file.get(), line, status, isLocked);
    return Attempt::Done;
}

} // namespace

Log::Log(std::string path, std::chrono::milliseconds lockWait)
    : m_path(std::move(path)), m_lockWait(lockWait) {}

Log& Log::shared() {
    const auto place = [] {
        const bool forAnotherUser = actingUserId() != ::geteuid();
        return forAnotherUser ? std::string() : joinPath(OwnPlaces::current().stateDirectory, "Veilkeep.log");
    };
    static Log log(place());
    return log;
}

void Log::keepSharedEmpty() {
    shared().m_path.clear();
}

void Log::write(std::string_view text) {
    if (!m_path.starts_with('/'))
        return;
    const int callersErrno = errno;
    const std::string line = lineOf(text);
    for (int attempt = 0; attempt < 16; ++attempt)
        if (tryAppending(m_path, line, m_lockWait) == Attempt::Done)
            break;
    errno = callersErrno;
}

void logLine(std::string_view text) {
    Log::shared().write(text);
}

void logError(std::string_view what, const Error& error) {
    const std::string reason = error.systemError != 0 ? std::strerror(error.systemError) : "not possible";
    logLine(std::string(what) + ": " + error.operation + " " + error.path + ": " + reason);
}

} // namespace veilkeep
