#pragma once

#include "core/base/Result.h"
#include "core/filesystem/FileStamp.h"
#include "core/log/TimeText.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

struct KeptFile;

struct SafeFileOptions {
    std::size_t maximumSize = std::size_t{256} << 20; // bytes that read() accepts
    std::size_t earlierCopies = 3;
    std::function<TimePoint()> clock = std::chrono::system_clock::now;
};

// A small file of ours that is read and saved as a whole and must never be lost: the item list, for instance.
// A save replaces only what this object has read or written itself; anything else at the place (damaged,
// unreadable, of a newer version, never looked at) is first kept under a name of its own,
// "NAME.damaged-2026-01-31T12-00-00Z". The last good states stay as "NAME.earlier-<time>", taken before a
// changed content replaces them and at most once an hour. Owned by whoever holds the lock on the data; one
// thread at a time.
class SafeFile {
public:
    enum class Saved { Written, Unchanged };

    explicit SafeFile(std::string path, SafeFileOptions options = {});

    const std::string& path() const { return m_path; }

    // The whole content; ENOENT where there is no file.
    Result<std::string> read();

    // The bytes that read() gave could not be understood: the next save keeps that file.
    void contentIsDamaged() { m_seen.reset(); }

    // Makes the directory where it is missing. Unchanged: the bytes are on the disk already and durably so.
    // NotDurable: the new content is in place, and the next save writes again. After any other error the
    // place holds what it held before.
    Result<Saved> save(std::string_view bytes);

    // Whether the place holds, unchanged and durably, what was read or saved last: a look at its stamp alone,
    // and a sync where it was only read.
    bool isAsLeft();

    // Full paths of the earlier good states, newest first.
    std::vector<std::string> earlierCopies() const;

private:
    using Digest = std::array<std::uint64_t, 2>;
    enum class Durability { Unknown, Proven, Failed };
    struct Seen {
        FileStamp stamp;
        Digest digest;
        Durability durability;
    };

    static Digest digestOf(std::string_view bytes);
    Result<Saved> confirm(const std::string& target);
    Result<Saved> replace(const std::string& target, const std::optional<FileStamp>& present,
                          std::string_view bytes, const Digest& digest);
    Result<KeptFile> keep(const std::string& target, const Digest& next) const;
    void remember(const std::string& target, const Digest& digest, Durability durability);

    std::string m_path;
    SafeFileOptions m_options;
    std::optional<Seen> m_seen; // the file that a save may replace
};

} // namespace veilkeep
