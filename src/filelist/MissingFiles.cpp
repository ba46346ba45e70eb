#include "filelist/MissingFiles.h"

#include "core/filesystem/ItemAtPath.h"
#include "core/log/Log.h"
#include "core/process/Parallel.h"
#include "core/tracking/AliasResolver.h"
#include "core/tracking/FileAlias.h"
#include "core/tracking/ItemMatch.h"
#include "filelist/MainThread.h"

#include <QTimer>

#include <string_view>

namespace veilkeep {

using Answer = AliasResolver::Answer;

MissingFiles::MissingFiles(FileList& files, Turns& turns, VolumeMounter* mounter)
    : m_files(files), m_turns(turns), m_mounter(mounter) {
    connect(&m_background, &DeepSearch::ended, this,
            [this](const ListedFile& file, DeepSearch::Outcome outcome, const std::string& path) {
                m_turns.run([this, file, outcome, path] {
                    take(file, outcome, path);
                    emit backgroundSearchEnded();
                });
            });
    connect(&m_background, &DeepSearch::finished, this,
            [this] { m_turns.run([this] { emit backgroundSearchFinished(); }); });
    // Not for a record that changes: to look through the list for each of a batch would take too long.
    const auto forget = [this] { m_recordsByItem.reset(); };
    connect(&files, &FileList::wasAssigned, this, forget);
    connect(&files, &FileList::filesAppended, this, forget);
    connect(&files, &FileList::filesRemoved, this, forget);
}

bool MissingFiles::isThere(const ListedFile& file, Mounting mounting) {
    if (!itemExistsAt(std::string(file->path())) && !lookNearby(file, mounting))
        return false;
    m_onAbsentVolume.erase(file);
    return confirm(file);
}

bool MissingFiles::lookNearby(const ListedFile& file, Mounting mounting) {
    AliasResolver resolver(AliasResolver::Reach::Nearby, mounting == Mounting::Never ? nullptr : m_mounter);
    return m_files.change(file, [&](File& record) {
        return record.checkPathesConsistencyWithMount(resolver, mounting == Mounting::WithQuestions);
    });
}

bool MissingFiles::confirm(const ListedFile& file) {
    const std::string before(file->path());
    const auto check = m_files.change(file, [this](File& record) {
        return record.checkIdentity(
            [&](const AliasRecord& item) { return recordsByItem().isAnothers(item, record); });
    });
    if (check == File::IdentityCheck::FollowedElsewhere)
        logLine("Another item has taken the place of " + before + ", which was found at " +
                std::string(file->path()));
    if (check == File::IdentityCheck::AnothersItemThere)
        return false;
    return check != File::IdentityCheck::NothingThere || itemExistsAt(before);
}

const RecordsByItem& MissingFiles::recordsByItem() {
    if (!m_recordsByItem)
        m_recordsByItem = std::make_unique<RecordsByItem>(m_files);
    return *m_recordsByItem;
}

bool MissingFiles::isAtItsPlace(const ListedFile& file) {
    const auto found = describeItemAt(std::string(file->path()));
    const auto known = decodeAliasRecord(file->alias().value_or(std::string_view()));
    if (!found || (known && isTheItem(*known, *found, Closeness::RecordedPath)))
        return found.has_value();
    return !recordsByItem().isAnothers(*found, *file);
}

MissingFiles::Files MissingFiles::missingOf(const Files& files) {
    std::vector<char> isFine(files.size());
    forEachInParallel(files.size(),
                      [&](std::size_t number) { isFine[number] = files[number]->isCertainlyAtItsPlace(); });
    Files absent;
    for (std::size_t number = 0; number < files.size(); ++number) {
        const ListedFile& file = files[number];
        if (!isFine[number] && (!itemExistsAt(std::string(file->path())) || !confirm(file)))
            absent.push_back(file);
    }
    std::vector<std::string_view> aliases;
    for (const ListedFile& file : absent)
        aliases.push_back(file->alias().value_or(std::string_view()));
    const auto answers =
        AliasResolver(AliasResolver::Reach::Nearby).resolve(aliases, AliasResolver::Mounting::Never);
    Files missing;
    for (std::size_t number = 0; number < absent.size(); ++number) {
        const Answer& answer = answers[number];
        const bool isFound = answer.outcome == Answer::Outcome::Found;
        const bool isAbsent = answer.outcome == Answer::Outcome::VolumeAbsent;
        take(absent[number],
             isFound    ? DeepSearch::Outcome::Found
             : isAbsent ? DeepSearch::Outcome::VolumeAbsent
                        : DeepSearch::Outcome::Missing,
             answer.path);
        if (!isAtItsPlace(absent[number]))
            missing.push_back(absent[number]);
    }
    return missing;
}

void MissingFiles::take(const ListedFile& file, DeepSearch::Outcome outcome, const std::string& path) {
    m_onAbsentVolume.erase(file);
    if (outcome == DeepSearch::Outcome::VolumeAbsent)
        m_onAbsentVolume.insert(file);
    if (outcome != DeepSearch::Outcome::Found || !itemExistsAt(path))
        return;
    // Since the search began the item may have come back, or gone on.
    if (file->path() == path || !isAtItsPlace(file))
        m_files.change(file, [&](File& record) { record.movedTo(path); });
}

void MissingFiles::searchAndWait(const Files& files, const std::function<bool()>& shouldEnd) {
    if (files.empty())
        return;
    DeepSearch search;
    connect(&search, &DeepSearch::ended, this, &MissingFiles::take);
    search.search(files);
    QTimer look; // whether to go on
    connect(&look, &QTimer::timeout, &search, [&] {
        if (shouldEnd())
            search.cancel();
    });
    look.start(50);
    MainThread::runUntil([&] { return !search.isRunning(); });
}

} // namespace veilkeep
