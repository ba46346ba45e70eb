#include "core/storage/SafeFile.h"

#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/log/Log.h"
#include "core/storage/EarlierCopies.h"
#include "core/storage/KeptFile.h"
#include "core/storage/ReplaceFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace veilkeep {
namespace {

Result<void> syncFileAndDirectory(const std::string& path) {
    const UniqueFd file(retryOnInterrupt([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC); }));
    if (!file || retryOnInterrupt([&] { return ::fsync(file.get()); }) != 0)
        return Error{ErrorCode::NotDurable, "fsync", path, errno};
    const auto synced = syncDirectory(directoryOf(path));
    if (!synced)
        return Error{ErrorCode::NotDurable, synced.error().operation, path, synced.error().systemError};
    return {};
}

} // namespace

SafeFile::SafeFile(std::string path, SafeFileOptions options)
    : m_path(std::move(path)), m_options(std::move(options)) {}

Result<std::string> SafeFile::read() {
    FileStamp stamp;
    auto bytes = readWholeFile(m_path, m_options.maximumSize, &stamp);
    if (!bytes) {
        m_seen.reset();
        return bytes;
    }
    const Digest digest = digestOf(*bytes);
    const bool isKnown = m_seen && m_seen->stamp == stamp && m_seen->digest == digest;
    m_seen = Seen{stamp, digest, isKnown ? m_seen->durability : Durability::Unknown};
    return bytes;
}

Result<SafeFile::Saved> SafeFile::save(std::string_view bytes) {
    const auto target = replaceTarget(m_path);
    if (!target)
        return target.error();
    const auto present = fileStamp(*target);
    if (!present)
        return present.error();
    if (!*present || !m_seen || m_seen->stamp != **present)
        m_seen.reset();
    const Digest digest = digestOf(bytes);
    if (m_seen && m_seen->digest == digest && m_seen->durability != Durability::Failed)
        return confirm(*target);
    return replace(*target, *present, bytes, digest);
}

bool SafeFile::isAsLeft() {
    if (!m_seen || m_seen->durability == Durability::Failed)
        return false;
    const auto target = replaceTarget(m_path);
    if (!target)
        return false;
    const auto present = fileStamp(*target);
    return present && *present == m_seen->stamp && confirm(*target);
}

std::vector<std::string> SafeFile::earlierCopies() const {
    const auto target = replaceTarget(m_path);
    return EarlierCopies(target ? *target : m_path).list(m_options.clock());
}

SafeFile::Digest SafeFile::digestOf(std::string_view bytes) {
    const XXH128_hash_t hash = XXH3_128bits(bytes.data(), bytes.size());
    return {hash.high64, hash.low64};
}

// A file that was only read may come from a process that died before it had synced it.
Result<SafeFile::Saved> SafeFile::confirm(const std::string& target) {
    if (m_seen->durability == Durability::Unknown) {
        const auto synced = syncFileAndDirectory(target);
        m_seen->durability = synced ? Durability::Proven : Durability::Failed;
        if (!synced)
            return synced.error();
    }
    return Saved::Unchanged;
}

Result<SafeFile::Saved> SafeFile::replace(const std::string& target, const std::optional<FileStamp>& present,
                                          std::string_view bytes, const Digest& digest) {
    if (const auto made = makeDirectories(directoryOf(target), 0700); !made)
        return made.error();
    const auto kept = present ? keep(target, digest) : Result<KeptFile>(KeptFile());
    if (!kept)
        return kept.error();
    const auto replaced = replaceFile(target, bytes);
    if (!replaced && replaced.error().code != ErrorCode::NotDurable) {
        if (present)
            takeBack(*kept, target, *present);
        return replaced.error();
    }
    remember(target, digest, replaced ? Durability::Proven : Durability::Failed);
    if (m_options.earlierCopies > 0)
        if (const auto pruned = EarlierCopies(target).prune(m_options.earlierCopies, m_options.clock());
            !pruned)
            logError("An earlier copy is left over", pruned.error());
    if (!replaced)
        return replaced.error();
    return Saved::Written;
}

// What this object has not read or written must be kept. A copy of what it has is only a precaution, for
// whose sake no save fails.
Result<KeptFile> SafeFile::keep(const std::string& target, const Digest& next) const {
    const TimePoint now = m_options.clock();
    if (!m_seen)
        return keepUnderDatedName(target, now);
    const EarlierCopies copies(target);
    if (m_options.earlierCopies == 0 || m_seen->digest == next || !copies.isDue(now))
        return KeptFile();
    const auto copy = copies.take(now);
    if (!copy)
        logError("An earlier copy was not taken", copy.error());
    return copy ? KeptFile{*copy, false} : KeptFile();
}

void SafeFile::remember(const std::string& target, const Digest& digest, Durability durability) {
    m_seen.reset();
    if (const auto stamp = fileStamp(target); stamp && *stamp)
        m_seen = Seen{**stamp, digest, durability};
}

} // namespace veilkeep
