#include "filelist/BrokenFiles.h"

#include "core/filesystem/ItemAtPath.h"
#include "core/log/Log.h"
#include "core/tracking/AliasRecord.h"
#include "filelist/Texts.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(BrokenFiles)
};

bool isThere(const ListedFile& file) {
    return itemExistsAt(std::string(file->path()));
}

} // namespace

BrokenFiles::BrokenFiles(const FilesViewControllerParts& parts, FileList& files, ListSaver& saver)
    : m_parts(parts), m_files(files), m_saver(saver), m_missing(files, parts.turns, parts.mounter) {
    connect(&m_missing, &MissingFiles::backgroundSearchEnded, this, &BrokenFiles::searchStateChanged);
    connect(&m_missing, &MissingFiles::backgroundSearchFinished, this, [this] {
        updateStates();
        m_saver.saveWhileEventsRun();
        emit searchStateChanged();
    });
}

void BrokenFiles::markMissing(const Files& files) {
    Files missing = m_missing.missingOf(files);
    std::erase_if(missing, [](const ListedFile& file) { return file->state() == File::Broken; });
    m_files.changeEach(missing, [](File& record) { record.setState(File::Broken); });
}

void BrokenFiles::performSanityCheck(const Files& files) {
    markMissing(Files(files));
    m_saver.saveDataToDisk();
}

bool BrokenFiles::performSanityCheckForFile(const ListedFile& file) {
    const bool isMissing = !m_missing.missingOf({file}).empty();
    if (isMissing)
        markBroken(file);
    return !isMissing;
}

void BrokenFiles::markBroken(const ListedFile& file) {
    if (file->state() != File::Broken)
        m_files.change(file, [](File& record) { record.setState(File::Broken); });
}

BrokenFiles::Files BrokenFiles::brokenFiles() const {
    Files broken;
    std::ranges::copy_if(m_files.all(), std::back_inserter(broken),
                         [](const ListedFile& file) { return file->state() == File::Broken; });
    return broken;
}

// Items that are there again are broken no more.
void BrokenFiles::updateStates() {
    for (const ListedFile& file : brokenFiles())
        if (m_missing.isAtItsPlace(file))
            m_files.change(file, [](File& record) { record.setState(record.stateFromPlace()); });
}

void BrokenFiles::tryToFixFile(const ListedFile& file) {
    const MissingFiles::Mounting mounting = mountingFor(file);
    bool isFound = m_missing.isThere(file, mounting);
    if (!isFound && mayBeFoundEverywhere(file, mounting)) {
        if (m_isInBatch)
            searchAndWait({file}); // under the batch's own progress
        else
            searchWithProgress({file});
        isFound = m_missing.isAtItsPlace(file);
    }
    if (!isFound)
        logLine("Failed to locate file. Wont do anything");
    const std::int32_t state = isFound ? file->stateFromPlace() : std::int32_t{File::Broken};
    if (file->state() != state)
        m_files.change(file, [&](File& record) { record.setState(state); });
}

MissingFiles::Mounting BrokenFiles::mountingFor(const ListedFile& file) {
    using Mounting = MissingFiles::Mounting;
    if (takesCheapStepsAlone())
        return Mounting::Never;
    if (!file->isWhereVolumesComeAndGo() || veilkeep::isThere(file))
        return Mounting::Silently;
    return mayLocate(file) ? Mounting::WithQuestions : Mounting::Never;
}

bool BrokenFiles::mayBeFoundEverywhere(const ListedFile& file, MissingFiles::Mounting mounting) const {
    return mounting != MissingFiles::Mounting::Never && !m_searchedInBatch.contains(file) &&
           !m_missing.isOnAbsentVolume(file);
}

bool BrokenFiles::mayLocate(const ListedFile& file) {
    const auto alias = decodeAliasRecord(file->alias().value_or(std::string_view()));
    const std::string volume = alias ? alias->volume.uuid : std::string();
    if (const auto known = m_mayLocate.find(volume); known != m_mayLocate.end())
        return known->second;
    const int answer = m_parts.alerts.ADRunInformationalAlertSheet(
        Alert::Window::Main,
        Texts::tr("The file \"%1\" is located on a volume (network or a flash drive) and cannot be found.")
            .arg(shownPath(file->originalPath())),
        Texts::tr("Veilkeep can try to find it, but this can take some time. Would you like to locate it "
                  "automatically?"),
        Texts::tr("Locate"), Texts::tr("Ignore"));
    if (m_isInBatch)
        m_mayLocate[volume] = answer == Alerts::defaultAnswer;
    return answer == Alerts::defaultAnswer;
}

void BrokenFiles::beginBatch(const Files& batch) {
    m_isInBatch = true;
    if (takesCheapStepsAlone())
        return;
    Files wanted;
    for (const ListedFile& file : batch)
        if (!veilkeep::isThere(file) && !file->isWhereVolumesComeAndGo())
            wanted.push_back(file);
    searchWithProgress(m_missing.missingOf(wanted));
    m_searchedInBatch.insert(wanted.begin(), wanted.end());
}

void BrokenFiles::endBatch() {
    m_isInBatch = false;
    m_searchedInBatch.clear();
    m_mayLocate.clear();
}

void BrokenFiles::searchWithProgress(const Files& files) {
    if (files.empty())
        return;
    m_parts.progress.showProgressForWindow(Alert::Window::Main,
                                           Texts::tr("Searching for inconsistent files. Please wait..."),
                                           ProgressController::Cancelling::Offered);
    searchAndWait(files);
    m_parts.progress.hideProgress();
}

void BrokenFiles::searchAndWait(const Files& files) {
    if (files.empty())
        return;
    m_parts.progress.updateWithSubStage(Texts::tr("Searching for missing items..."));
    m_missing.searchAndWait(files,
                            [this] { return m_parts.progress.isCancelled() || m_parts.turns.isLeaving(); });
    updateStates();
}

} // namespace veilkeep
