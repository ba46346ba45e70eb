#include "filelist/FileListActions.h"

#include "alerts/ADAlertManager.h"
#include "core/log/Log.h"
#include "filelist/Texts.h"
#include "format/ErrorText.h"
#include "format/ValueFormatting.h"

#include <algorithm>
#include <cerrno>
#include <set>

namespace veilkeep {
namespace {

constexpr std::size_t listedApplications = 10;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(FileListActions)
};

bool isToBeOpened(const File& file) {
    return file.state() != File::Hidden;
}

using OpenWithItem = FileListActions::OpenWithItem;

OpenWithItem separator() {
    return {.kind = OpenWithItem::Kind::Separator};
}

// A name that is there already gets the version of the default application, whichever it is of.
std::vector<OpenWithItem> itemsFor(const Applications::ForItem& applications) {
    const InstalledApplication& byDefault = *applications.defaultApplication;
    std::vector<OpenWithItem> items{
        {.title = Texts::tr("%1 (default)").arg(byDefault.name), .application = byDefault}, separator()};
    std::set<QString> titles;
    const std::size_t count = std::min(applications.all.size(), listedApplications);
    for (std::size_t index = 0; index < count; ++index) {
        const InstalledApplication& application = applications.all[index];
        const bool isThere = !titles.insert(application.name).second;
        items.push_back({.title = isThere && !byDefault.version.isEmpty()
                                      ? Texts::tr("%1 (%2)").arg(application.name, byDefault.version)
                                      : application.name,
                         .application = application});
    }
    items.push_back(separator());
    return items;
}

} // namespace

FileListActions::FileListActions(FilesViewController& files, Alerts& alerts, Applications* applications)
    : m_files(files), m_alerts(alerts), m_applications(applications) {}

std::vector<OpenWithItem> FileListActions::openWithMenuItemForFile(const std::string& path) const {
    const Applications::ForItem applications =
        m_applications ? m_applications->applicationsFor(path) : Applications::ForItem();
    std::vector<OpenWithItem> items;
    if (applications.defaultApplication) {
        items = itemsFor(applications);
    } else {
        logLine("There is no default App for " + path);
        items = {{.kind = OpenWithItem::Kind::None, .title = Texts::tr("<None>")}, separator()};
    }
    items.push_back({.kind = OpenWithItem::Kind::Other, .title = Texts::tr("Other…")});
    return items;
}

FileListActions::Item FileListActions::validateMenuItem(int tag, const QString& currentGroupName) const {
    switch (tag) {
    case Open:
    case Reveal:
        return {.isEnabled = m_files.filesController().isAnySelected(isToBeOpened)};
    case OpenWith: {
        if (m_files.filesController().selectedCount() != 1)
            return {.isEnabled = false};
        const ListedFile file = m_files.firstSelectedFile();
        return {.isEnabled = isToBeOpened(*file) && file->isFile() && !file->path().ends_with(".app")};
    }
    case Remove:
        return {.title = currentGroupName == QLatin1String("All Files") ? Texts::tr("Remove From List")
                                                                        : Texts::tr("Remove From Group")};
    default:
        return {};
    }
}

FileListActions::Item FileListActions::validateToolbarItem(int tag) const {
    if (tag != RemoveTool)
        return {};
    const std::size_t count = m_files.filesController().selectedCount();
    if (count < 2)
        return {count > 0, Texts::tr("Remove Item"), Texts::tr("Remove selected item from the list")};
    return {true, Texts::tr("Remove Items"), Texts::tr("Remove selected items from the list")};
}

QString FileListActions::toolTipFor(const File& file, RowPart part) const {
    if (part == RowPart::Reveal)
        return Texts::tr("Reveal in Finder");
    if (part == RowPart::Switch) {
        switch (file.state()) {
        case File::Visible:
            return Texts::tr("Hide file");
        case File::Hidden:
            return Texts::tr("Unhide file");
        case File::Broken:
            return Texts::tr("Fix broken file");
        }
    }
    return placeWithTilde(file.originalPath());
}

int FileListActions::menuState(std::ptrdiff_t row) {
    const FilesViewController::Files& rows = m_files.filesController().arrangedObjects();
    if (row < 0 || row >= std::ssize(rows))
        return 2;
    const ListedFile file = rows[static_cast<std::size_t>(row)];
    if (!m_files.filesController().isSelected(file))
        m_files.filesController().setSelectedObjects({file});
    m_contextMenuSelectedItem = row;
    return switchValue();
}

void FileListActions::menuSwitchOnOff() {
    m_files.switchOnOff(switchValue() == 1 ? 0 : 1);
}

// What is broken is neither on nor off.
int FileListActions::switchValue() const {
    const auto areAll = [&](std::int32_t state) {
        return !m_files.filesController().isAnySelected(
            [&](const File& file) { return file.state() != state; });
    };
    return areAll(File::Visible) ? 0 : areAll(File::Hidden) ? 1 : 2;
}

void FileListActions::openFileAction() {
    openEach(m_files.getAllSelectedFiles());
}

void FileListActions::openEach(const FilesViewController::Files& files) {
    std::vector<Failure> failures;
    for (const ListedFile& file : files) {
        if (!isToBeOpened(*file))
            continue;
        if (const auto opened = open(std::string(file->path())); !opened)
            failures.push_back({file, opened.error()});
    }
    tell(failures);
}

void FileListActions::menuRevealFileInFinder() {
    for (const ListedFile& file : selectedToOpen())
        m_files.revealFileInFinder(std::string(file->path()));
}

void FileListActions::openSelectedFileWithApplication(const QString& identifier) {
    const FilesViewController::Files files = selectedToOpen();
    if (files.size() != 1 || !m_applications)
        return;
    const auto opened = m_applications->openWith(identifier, std::string(files.front()->path()));
    if (!opened)
        tell({{files.front(), opened.error()}});
}

FilesViewController::Files FileListActions::selectedToOpen() const {
    FilesViewController::Files files = m_files.getAllSelectedFiles();
    std::erase_if(files, [](const ListedFile& file) { return !isToBeOpened(*file); });
    return files;
}

Result<void> FileListActions::open(const std::string& path) const {
    if (!m_applications)
        return Error::system("open", path, ENOTSUP);
    return m_applications->open(path);
}

void FileListActions::tell(const std::vector<Failure>& failures) {
    for (const Failure& failure : failures)
        logError("An item could not be opened", failure.error);
    if (failures.size() == 1) {
        const auto& [file, error] = failures.front();
        ADAlertManager(m_alerts).showGenericError(
            Texts::tr("“%1” could not be opened.").arg(shownPath(file->name())), errorReason(error));
        return;
    }
    if (failures.empty())
        return;
    Alert alert;
    alert.style = Alert::Style::Warning;
    alert.title = Texts::tr("Some items could not be opened.");
    for (const auto& [file, error] : failures)
        alert.errors.push_back({shownPath(file->name()), errorReason(error)});
    m_alerts.runAlert(std::move(alert), {Texts::tr("OK")});
}

} // namespace veilkeep
