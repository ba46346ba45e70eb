#include "core/filesystem/MountTable.h"

#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <mutex>
#include <optional>

namespace veilkeep {
namespace {

// Takes what stands before the separator off the front of the text; all of it where there is no separator.
std::string_view takeUntil(std::string_view& text, char separator) {
    const auto end = std::min(text.find(separator), text.size());
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return taken;
}

template <class Number>
bool readNumber(std::string_view text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

bool isOctalEscape(std::string_view text) {
    const auto isOctalDigit = [](char c) { return c >= '0' && c <= '7'; };
    return text.size() >= 4 && text[0] == '\\' && text[1] <= '3' &&
           std::ranges::all_of(text.substr(1, 3), isOctalDigit);
}

// The system writes blanks, tabs, line breaks and backslashes within a field as "\ooo".
std::string withoutEscapes(std::string_view field) {
    std::string text;
    text.reserve(field.size());
    while (!field.empty()) {
        if (isOctalEscape(field)) {
            text.push_back(
                static_cast<char>((field[1] - '0') * 64 + (field[2] - '0') * 8 + (field[3] - '0')));
            field.remove_prefix(4);
        } else {
            text.push_back(field.front());
            field.remove_prefix(1);
        }
    }
    return text;
}

// "27 1 254:0 / /mnt rw,relatime shared:1 - ext4 /dev/vda rw": any number of optional fields before the "-".
std::optional<Mount> parseLine(std::string_view line) {
    Mount mount;
    if (!readNumber(takeUntil(line, ' '), mount.id) || !readNumber(takeUntil(line, ' '), mount.parentId) ||
        !readNumber(takeUntil(line, ':'), mount.major) || !readNumber(takeUntil(line, ' '), mount.minor))
        return std::nullopt;
    mount.root = withoutEscapes(takeUntil(line, ' '));
    mount.mountPoint = withoutEscapes(takeUntil(line, ' '));
    while (!line.empty() && takeUntil(line, ' ') != "-") { // options, optional fields
    }
    mount.fileSystemType = withoutEscapes(takeUntil(line, ' '));
    mount.source = withoutEscapes(takeUntil(line, ' '));
    if (!mount.mountPoint.starts_with('/') || mount.fileSystemType.empty())
        return std::nullopt;
    return mount;
}

std::string readToEnd(int fd) {
    std::string content;
    char buffer[16384];
    ssize_t count = 0;
    while ((count = retryOnInterrupt([&] { return ::read(fd, buffer, sizeof buffer); })) > 0)
        content.append(buffer, static_cast<std::size_t>(count));
    return content; // cut short by a read error: the mounts it lost are looked for again through reread()
}

// The table last read, and the descriptor through which the system tells of changes.
class LiveTable {
public:
    std::shared_ptr<const MountTable> current() {
        const std::lock_guard lock(m_mutex);
        return m_table && !hasChanged() ? m_table : read();
    }

    std::shared_ptr<const MountTable> reread() {
        const std::lock_guard lock(m_mutex);
        return read();
    }

private:
    bool hasChanged() const {
        pollfd watched = {m_mountinfo.get(), POLLPRI, 0};
        return !m_mountinfo || retryOnInterrupt([&] { return ::poll(&watched, 1, 0); }) != 0;
    }

    // Opened anew, since an open descriptor stays with the mount namespace that it was opened in.
    std::shared_ptr<const MountTable> read() {
        m_mountinfo.reset(
            retryOnInterrupt([] { return ::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC); }));
        m_table = std::make_shared<const MountTable>(
            m_mountinfo ? MountTable::parse(readToEnd(m_mountinfo.get())) : MountTable());
        return m_table;
    }

    std::mutex m_mutex;
    UniqueFd m_mountinfo;
    std::shared_ptr<const MountTable> m_table;
};

LiveTable& liveTable() {
    static LiveTable table;
    return table;
}

} // namespace

MountTable MountTable::parse(std::string_view mountinfo) {
    MountTable table;
    while (!mountinfo.empty())
        if (auto mount = parseLine(takeUntil(mountinfo, '\n')))
            table.m_mounts.push_back(std::move(*mount));
    return table;
}

std::shared_ptr<const MountTable> MountTable::current() {
    return liveTable().current();
}

std::shared_ptr<const MountTable> MountTable::reread() {
    return liveTable().reread();
}

bool MountTable::hasMountPoint(std::string_view path) const {
    return std::ranges::find(m_mounts, path, &Mount::mountPoint) != m_mounts.end();
}

const Mount* MountTable::findById(std::uint64_t id) const {
    const auto found = std::ranges::find(m_mounts, id, &Mount::id);
    return found == m_mounts.end() ? nullptr : &*found;
}

// Walks down as the system does: what is mounted on a mount hides what was mounted below that place before.
const Mount* MountTable::mountHolding(std::string_view path) const {
    const Mount* holding = nullptr;
    for (std::size_t steps = 0; steps < m_mounts.size(); ++steps) {
        const Mount* const next = firstMountOn(holding, path);
        if (!next)
            break;
        holding = next;
    }
    return holding;
}

const Mount* MountTable::firstMountOn(const Mount* parent, std::string_view path) const {
    const auto liesOnParent = [&](const Mount& mount) {
        if (parent)
            return mount.parentId == parent->id && mount.id != parent->id;
        return mount.parentId == mount.id || !findById(mount.parentId);
    };
    const Mount* first = nullptr;
    for (const Mount& mount : m_mounts)
        if (isSameOrBelow(path, mount.mountPoint) && liesOnParent(mount) &&
            (!first || mount.mountPoint.size() <= first->mountPoint.size()))
            first = &mount;
    return first;
}

std::string pathOnVolume(const Mount& mount, std::string_view path) {
    if (mount.mountPoint != "/")
        path.remove_prefix(std::min(path.size(), mount.mountPoint.size()));
    if (path.empty() || path == "/")
        return mount.root;
    return mount.root == "/" ? std::string(path) : mount.root + std::string(path);
}

} // namespace veilkeep
