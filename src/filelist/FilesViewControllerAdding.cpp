#include "filelist/FilesViewController.h"

#include "core/base/PathText.h"
#include "filelist/AddBatches.h"
#include "filelist/MainThread.h"
#include "filelist/RecordsByItem.h"
#include "filelist/Texts.h"
#include "format/ErrorText.h"

#include <QCoreApplication>

#include <unordered_set>
#include <utility>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(FilesViewController)
};

QString shownName(std::string_view path) {
    return shownPath(lastPathComponent(path));
}

QString notAddedTitle(std::size_t count) {
    return count == 1 ? Texts::tr("An item could not be added.")
                      : Texts::tr("Some items could not be added.");
}

void tellDuplicates(Alerts& alerts, const std::vector<std::string>& paths) {
    QString message =
        paths.size() == 1
            ? Texts::tr("The following item is already in the list of %1 and cannot be added again:\n")
            : Texts::tr(
                  "The following items are already in the list of %1 and they cannot be added again:\n");
    message = message.arg(applicationName());
    for (const std::string& path : paths)
        message += shownName(path) + QLatin1Char('\n');
    alerts.beginInformationalAlertSheet(notAddedTitle(paths.size()), message);
}

void tellMissing(Alerts& alerts, const std::vector<Error>& errors) {
    QString message = errors.size() == 1 ? Texts::tr("The following item could not be found:\n")
                                         : Texts::tr("The following items could not be found:\n");
    for (const Error& error : errors)
        message += Texts::tr("%1: %2").arg(shownName(error.path), errorReason(error)) + QLatin1Char('\n');
    alerts.beginInformationalAlertSheet(notAddedTitle(errors.size()), message);
}

} // namespace

void FilesViewController::addFiles(const std::vector<std::string>& paths) {
    std::vector<std::string> newPaths, duplicates;
    for (const std::string& path : paths) {
        std::string plain(withoutTrailingSlashes(path));
        if (!plain.empty())
            (ifAlreadyAddedFile(plain) ? duplicates : newPaths).push_back(std::move(plain));
    }
    if (!duplicates.empty())
        tellDuplicates(m_parts.alerts, duplicates);
    if (!newPaths.empty())
        m_addBatches->add(std::move(newPaths), m_parts.groups.currentGroupID());
}

std::unique_ptr<AddBatches> FilesViewController::makeAddBatches() {
    return std::make_unique<AddBatches>(AddBatches::Steps{
        .refuseProtected = [this](const std::string& path) { showProtectedAlertForFile(path); },
        .take = [this](std::vector<File> files) { addNewFiles(std::move(files)); },
        .finish =
            [this](std::vector<Error> missing) {
                m_knownToAdding.reset();
                saveDataToDisk();
                if (!missing.empty())
                    tellMissing(m_parts.alerts, missing);
            },
    });
}

// The list may have changed since the batch began, and a batch may hold a path twice. An item that was moved
// by hand since it was listed keeps its record and group, as does one that is listed by another way through
// links.
void FilesViewController::addNewFiles(std::vector<File> files) {
    std::unordered_set<std::string_view> seen;
    if (!m_knownToAdding)
        m_knownToAdding = std::make_unique<RecordsByItem>(m_files);
    const auto isKnown = [&](const File& added) {
        if (m_knownToAdding->atSamePlaceAs(added))
            return true;
        const ListedFile known = m_knownToAdding->strayOf(added);
        if (known)
            m_files.change(known, [&](File& file) { file.movedTo(added.path()); });
        return known != nullptr;
    };
    std::erase_if(files, [&](const File& file) {
        return ifAlreadyAddedFile(file.originalPath()) || !seen.insert(file.originalPath()).second ||
               isKnown(file);
    });
    m_files.append(std::move(files));
    emit numberOfFilesOfCurrentGroupChanged();
}

bool FilesViewController::isAdding() const {
    return m_addBatches->isAdding();
}

void FilesViewController::waitForAdding() {
    MainThread::runUntil([this] { return !isAdding(); });
}

void FilesViewController::showProtectedAlertForFile(const std::string& path) {
    m_parts.alerts.ADRunInformationalAlertSheet(
        Alert::Window::None,
        Texts::tr("The \"%1\" item is a protected system file or folder.").arg(shownPath(path)),
        Texts::tr("Veilkeep is not allowed to hide it to avoid serious system malfunctions."),
        Texts::tr("OK"));
}

} // namespace veilkeep
