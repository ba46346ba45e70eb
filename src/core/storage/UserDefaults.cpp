#include "core/storage/UserDefaults.h"

#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/FileLock.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/log/Log.h"
#include "core/storage/KeptFile.h"
#include "core/storage/PropertyList.h"
#include "core/storage/ReplaceFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace veilkeep {
namespace {

SafeFileOptions defaultsFileOptions() {
    SafeFileOptions options;
    options.maximumSize = maximumPropertyListSize;
    options.earlierCopies = 0; // settings are not worth crowding the configuration directory
    return options;
}

// The clock that dates files ticks every 10 ms at most: a file that was changed within that time may change
// again without looking any different. So may one that is dated in the future.
bool isSettled(const FileStamp& stamp) {
    constexpr std::int64_t tick = 20'000'000;
    const auto now = std::chrono::duration_cast<std::chrono::nanoseconds>(
        std::chrono::system_clock::now().time_since_epoch());
    return now.count() - stamp.modificationTime > tick;
}

bool isShortOfResources(const Error& error) {
    return error.systemError == EMFILE || error.systemError == ENFILE || error.systemError == ENOMEM;
}

bool hasNoLocks(const Error& error) {
    return error.systemError == ENOLCK || error.systemError == EOPNOTSUPP || error.systemError == ENOSYS;
}

// The lock on a file beside the defaults; that file stays, since removing it would let two in at once. A file
// system without locks must do without: settings that can never be stored help nobody.
Result<UniqueFd> takeLock(const std::string& target, std::chrono::milliseconds wait) {
    const std::string directory = directoryOf(target);
    if (auto made = makeDirectories(directory, 0700); !made)
        return std::move(made).error();
    const std::string path = joinPath(directory, "." + std::string(lastPathComponent(target)) + ".lock");
    UniqueFd file(retryOnInterrupt(
        [&] { return ::open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600); }));
    if (!file)
        return Error::system("open", path, errno);
    if (auto locked = lockExclusively(file.get(), path, wait); !locked && !hasNoLocks(locked.error()))
        return std::move(locked).error();
    return file;
}

Result<PropertyDictionary> parsed(const Result<std::string>& bytes) {
    return bytes ? parsePropertyList(*bytes) : Result<PropertyDictionary>(bytes.error());
}

// By what it contains: one that cannot be read may be whole.
bool isDamage(const Error& error) {
    return error.code == ErrorCode::Damaged || error.code == ErrorCode::TooLarge;
}

bool isDamaged(const std::string& path) {
    const auto content = parsed(readWholeFile(path, maximumPropertyListSize));
    return !content && isDamage(content.error());
}

// Under the lock; the dated name.
Result<std::string> putAside(const std::string& target) {
    auto kept = keepUnderDatedName(target, std::chrono::system_clock::now());
    if (!kept)
        return kept.error();
    if (!kept->moved && ::unlink(target.c_str()) != 0)
        return Error::system("unlink", target, errno);
    return std::move(kept->path);
}

} // namespace

UserDefaults::UserDefaults(std::string path, std::chrono::milliseconds wait)
    : m_path(std::move(path)), m_wait(wait), m_file(m_path, defaultsFileOptions()) {}

std::optional<bool> UserDefaults::boolean(PropertyKey key) const {
    const auto found = value(key);
    return found ? found->asBoolean() : std::nullopt;
}

std::optional<std::int64_t> UserDefaults::integer(PropertyKey key) const {
    const auto found = value(key);
    return found ? found->asInteger() : std::nullopt;
}

std::optional<double> UserDefaults::real(PropertyKey key) const {
    const auto found = value(key);
    return found ? found->asReal() : std::nullopt;
}

std::optional<std::string> UserDefaults::string(PropertyKey key) const {
    const auto found = value(key);
    const auto text = found ? found->asString() : std::nullopt;
    return text ? std::optional<std::string>(*text) : std::nullopt;
}

std::optional<std::string> UserDefaults::data(PropertyKey key) const {
    const auto found = value(key);
    if (!found || !std::holds_alternative<Bytes>(found->content()))
        return std::nullopt;
    return std::string(*found->asString());
}

std::optional<Value> UserDefaults::value(PropertyKey key) const {
    const std::lock_guard lock(m_mutex);
    for (const Changes* changes : {&m_pending, &m_beingStored})
        for (const Change& change : *changes)
            if (change.key == key)
                return change.value.isNull() ? std::nullopt : std::optional(change.value);
    refresh();
    const Value* stored = std::as_const(m_stored).find(key);
    return stored ? std::optional(*stored) : std::nullopt;
}

bool UserDefaults::contains(PropertyKey key) const {
    return value(key).has_value();
}

void UserDefaults::set(PropertyKey key, Value value) {
    const std::lock_guard lock(m_mutex);
    put(m_pending, key, std::move(value));
}

void UserDefaults::remove(PropertyKey key) {
    set(key, Null());
}

void UserDefaults::discard(PropertyKey key) {
    const std::lock_guard lock(m_mutex);
    std::erase_if(m_pending, [key](const Change& change) { return change.key == key; });
}

Result<void> UserDefaults::synchronize() {
    const std::lock_guard storing(m_storing);
    {
        const std::lock_guard lock(m_mutex);
        if (m_pending.empty())
            return {};
        m_beingStored = std::exchange(m_pending, {});
    }
    auto stored = store(m_beingStored); // reads meanwhile look at it, nobody changes it
    const std::lock_guard lock(m_mutex);
    if (!stored) {
        for (Change& change : std::exchange(m_pending, std::exchange(m_beingStored, {})))
            put(m_pending, change.key, std::move(change.value));
        return stored;
    }
    m_beingStored.clear();
    m_stamp.reset();
    return {};
}

Result<void> UserDefaults::storeIfAbsent(PropertyKey key, Value value) {
    const std::lock_guard storing(m_storing);
    auto stored = store({{key, std::move(value)}}, Existing::Keep);
    const std::lock_guard lock(m_mutex);
    m_stamp.reset();
    return stored;
}

Result<std::optional<std::string>> UserDefaults::keepDamagedAside() {
    const std::lock_guard storing(m_storing);
    if (!isDamaged(m_path))
        return std::optional<std::string>();
    const auto target = replaceTarget(m_path);
    if (!target)
        return target.error();
    const auto lock = takeLock(*target, m_wait);
    if (!lock)
        return lock.error();
    if (!isDamaged(m_path)) // somebody else was faster
        return std::optional<std::string>();
    auto kept = putAside(*target);
    if (!kept)
        return kept.error();
    return std::optional(std::move(*kept));
}

void UserDefaults::put(Changes& changes, PropertyKey key, Value value) {
    for (Change& change : changes)
        if (change.key == key) {
            change.value = std::move(value);
            return;
        }
    changes.push_back({key, std::move(value)});
}

void UserDefaults::refresh() const {
    const auto present = fileStamp(m_path);
    if (present && *present && *present == m_stamp)
        return;
    m_stamp.reset();
    FileStamp stamp;
    const auto bytes = readWholeFile(m_path, maximumPropertyListSize, &stamp);
    if (!bytes && isShortOfResources(bytes.error()))
        return; // what was read before is nearer to the truth than nothing
    const auto content = parsed(bytes);
    m_stored = content ? *content : PropertyDictionary();
    const bool isTrouble = !content && content.error().systemError != ENOENT;
    if (isTrouble && !m_isTroubleTold)
        logError("The settings cannot be read and count as not set", content.error());
    m_isTroubleTold = isTrouble;
    if (bytes && isSettled(stamp))
        m_stamp = stamp;
}

// Empty where there is nothing that can be read and understood.
Result<PropertyDictionary> UserDefaults::readToStore(const std::string& target) {
    const auto bytes = m_file.read();
    if (!bytes && isShortOfResources(bytes.error()))
        return bytes.error();
    auto content = parsed(bytes);
    if (content)
        return content;
    if (content.error().systemError == ENOENT)
        return PropertyDictionary();
    const auto kept = putAside(target);
    if (!kept)
        return kept.error();
    logError("The settings cannot be read and are kept as " + *kept, content.error());
    m_damagedWhileRunning(*kept);
    return PropertyDictionary();
}

Result<void> UserDefaults::store(const Changes& changes, Existing existing) {
    const auto target = replaceTarget(m_path);
    if (!target)
        return target.error();
    const auto lock = takeLock(*target, m_wait);
    if (!lock)
        return lock.error();
    auto merged = readToStore(*target);
    if (!merged)
        return merged.error();
    for (const Change& change : changes)
        if (change.value.isNull())
            merged->remove(change.key);
        else if (existing == Existing::Replace || !merged->contains(change.key))
            merged->set(change.key, change.value);
    const auto xml = writePropertyList(*merged);
    if (!xml)
        return xml.error();
    if (const auto saved = m_file.save(*xml); !saved)
        return saved.error();
    return {};
}

} // namespace veilkeep
