#include "app/ADApp.h"
#include "app/ADAppParts.h"
#include "app/OwnUrls.h"

#include "core/base/PathText.h"
#include "filelist/RecordsByItem.h"
#include "filelist/Texts.h"

namespace veilkeep {
namespace {

// By either of its paths, or as the item that lies there by another way.
ListedFile listedAt(const FilesViewController& files, const RecordsByItem& byItem, const std::string& path) {
    const std::string plain(withoutTrailingSlashes(path));
    if (ListedFile file = files.findFileWithOriginalPath(plain))
        return file;
    if (ListedFile file = files.findFileWithPath(plain))
        return file;
    return byItem.atSamePlace(plain);
}

FilesViewController::Files listedOf(const FilesViewController& files, const std::vector<std::string>& paths,
                                    std::vector<std::string>* unlisted) {
    const RecordsByItem byItem(files.files());
    FilesViewController::Files listed;
    for (const std::string& path : paths)
        if (ListedFile file = listedAt(files, byItem, path))
            listed.push_back(std::move(file));
        else if (unlisted)
            unlisted->push_back(path);
    return listed;
}

QString shownLines(const QStringList& links) {
    QStringList lines;
    for (const QString& link : links)
        lines.append(shownPath(link.toStdString()));
    return lines.join(QLatin1Char('\n'));
}

} // namespace

void ADApp::open(const OpenRequest& request) {
    if (request.shows && !request.isEmpty())
        return showItems(request);
    for (const QString& link : request.links)
        getUrl(link);
    openFiles(request.paths);
}

void ADApp::openFiles(const std::vector<std::string>& paths) {
    if (!paths.empty())
        inOpenWindow([this, paths] { m_parts->list.window().addFiles(paths); });
}

void ADApp::showItems(const OpenRequest& request) {
    inOpenWindow([this, request] {
        if (!request.paths.empty())
            m_parts->list.window().whenOpen([this, paths = request.paths] { addAndSelect(paths); });
        if (!request.links.isEmpty())
            m_parts->list.alerts().beginInformationalAlertSheet(
                tr("Only files and folders of this computer can be shown."), shownLines(request.links));
    });
}

void ADApp::addAndSelect(const std::vector<std::string>& paths) {
    std::vector<std::string> unlisted;
    (void)listedOf(files(), paths, &unlisted);
    if (!unlisted.empty()) {
        files().addFiles(unlisted);
        files().waitForAdding();
    }
    const FilesViewController::Files shown = listedOf(files(), paths, nullptr);
    if (shown.empty())
        return; // what kept it from being added was said
    groups().selectRow(0);
    files().filterController().setGroup(groups().currentGroupID()); // whatever was searched for
    files().filesController().setSelectedObjects(shown);
    inWindow(&VeilkeepWindow::focusFiles);
}

// What comes from outside is protected like every other change. What is hidden stays hidden where the window
// is there.
void ADApp::inOpenWindow(const std::function<void()>& operation) {
    if (m_isTerminating)
        return;
    whenIdle([this, operation] {
        MainWindowController& window = m_parts->list.window();
        if (window.windowState()) {
            m_parts->window.activate(true);
            m_parts->window.show();
        } else {
            window.showVeilkeepActivateApp(true);
        }
        if (window.windowState())
            operation();
    });
}

} // namespace veilkeep
