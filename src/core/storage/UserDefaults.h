#pragma once

#include "core/environment/XdgDirectories.h"
#include "core/filesystem/FileStamp.h"
#include "core/records/PropertyDictionary.h"
#include "core/storage/SafeFile.h"

#include <chrono>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace veilkeep {

// The user's settings: an XML property list that several programs read and write at the same time. A read
// answers from, in this order, what was set here and is not stored yet, and the file as it is now. What is
// set stays pending until synchronize(), the destructor writes nothing. A file that cannot be read or
// understood counts as empty, with a line in the log, and is kept under a dated name when it is replaced. Any
// thread.
class UserDefaults {
public:
    static constexpr std::chrono::milliseconds lockWait{5000};

    explicit UserDefaults(std::string path = OwnPlaces::current().defaultsFile,
                          std::chrono::milliseconds wait = lockWait);

    // Each answers nothing when the key is absent or its value is of another kind; Value says which kinds
    // stand for another. string() answers for data too: text that is not UTF-8 is stored as such.
    std::optional<bool> boolean(PropertyKey key) const;
    std::optional<std::int64_t> integer(PropertyKey key) const;
    std::optional<double> real(PropertyKey key) const;
    std::optional<std::string> string(PropertyKey key) const;
    std::optional<std::string> data(PropertyKey key) const;
    std::optional<Value> value(PropertyKey key) const;
    bool contains(PropertyKey key) const;

    void set(PropertyKey key, Value value); // the null marker removes
    void remove(PropertyKey key);
    void discard(PropertyKey key); // what was set and is not stored yet

    // Stores the value at once unless the key has one by then, whoever gave it. After an error nothing is
    // pending.
    Result<void> storeIfAbsent(PropertyKey key, Value value);

    // Stores what is pending: under a lock that all processes share, key by key into the file as it is then,
    // so that nobody's change is lost and what this version does not know stays. After an error everything
    // is pending still (NotDurable: though the file has it). EWOULDBLOCK: others held the lock for too long.
    Result<void> synchronize();

    // For the start: a file that cannot be understood goes under a dated name, which is answered, and nothing
    // is stored then. Nothing where there is no such file.
    Result<std::optional<std::string>> keepDamagedAside();

    // Called with that name where storing puts a file aside, which was damaged since the start or cannot be
    // read: on the thread that stores, which holds locks of this object. Set before anything is stored.
    void setDamagedWhileRunning(std::function<void(const std::string& keptPath)> tell) {
        m_damagedWhileRunning = std::move(tell);
    }

private:
    struct Change {
        PropertyKey key;
        Value value; // null: removed
    };
    using Changes = std::vector<Change>;

    enum class Existing { Replace, Keep };

    static void put(Changes& changes, PropertyKey key, Value value);
    void refresh() const;
    Result<void> store(const Changes& changes, Existing existing = Existing::Replace);
    Result<PropertyDictionary> readToStore(const std::string& target);

    const std::string m_path;
    const std::chrono::milliseconds m_wait;
    std::function<void(const std::string&)> m_damagedWhileRunning = [](const std::string&) {};

    std::mutex m_storing; // taken before m_mutex: one synchronize() at a time
    SafeFile m_file;      // under m_storing

    mutable std::mutex m_mutex; // everything below
    Changes m_pending;
    Changes m_beingStored; // by the synchronize() that runs
    mutable PropertyDictionary m_stored;
    mutable std::optional<FileStamp>
        m_stamp; // of the file that m_stored was read from, while it may be relied on
    mutable bool m_isTroubleTold = false; // to the log, why it could not be read
};

} // namespace veilkeep
