#include "requests/ItemRequests.h"

#include "core/base/PathText.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/names/BaseCloakLogic.h"
#include "format/ErrorText.h"
#include "requests/RequestRules.h"

#include <QCoreApplication>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <unordered_set>
#include <utility>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(ItemRequests)
};

QString notThereReason(int systemError) {
    return workerErrorText(workerErrorFromErrno(systemError));
}

} // namespace

std::vector<std::string> ItemRequests::pathsOnce() const {
    std::vector<std::string> paths;
    std::unordered_set<std::string> known;
    LinkResolver links;
    for (const std::string& argument : m_work.request.paths) {
        std::string path(withoutTrailingSlashes(argument));
        const std::string& folder = links.resolved(std::string(parentPath(path)));
        if (known.insert(joinPath(folder, lastPathComponent(path))).second)
            paths.push_back(std::move(path));
    }
    return paths;
}

QString ItemRequests::refusal(const std::string& path) {
    if (!openItemAt(path)) {
        const int reason = errno;
        const bool isHidden = !isHiddenForm(path) && itemExistsAt(hiddenFormOf(path));
        return isHidden ? workerErrorText(WorkerError::AlreadyHidden) : notThereReason(reason);
    }
    if (isHiddenForm(path))
        return workerErrorText(WorkerError::AlreadyHidden);
    return BaseCloakLogic::isProtectedFileAtPath(path) ? workerErrorText(WorkerError::Protected) : QString();
}

// A record from the start, so that a bring-back that fails leaves the item known.
bool ItemRequests::takeInHidden(const std::string& path) {
    const std::string hidden = hiddenFormOf(path);
    if (!itemExistsAt(hidden))
        return false;
    if (!m_work.listedInAnyForm(path))
        m_work.controller.files().append(
            File::fileWithPath(hidden, BaseCloakLogic::constructOriginalFullFileName(hidden), File::Hidden));
    return true;
}

void ItemRequests::addAll(const std::vector<std::string>& paths) {
    if (paths.empty())
        return;
    m_work.controller.addFiles(paths);
    m_work.controller.waitForAdding();
}

void ItemRequests::add() {
    const bool hasGroup = m_work.option(requestOption::group).isValid();
    const ListedGroup group = hasGroup ? m_work.groupNamedBy(requestOption::group) : nullptr;
    if (hasGroup && !group)
        return;
    std::vector<std::string> wanted;
    std::vector<std::string> toAdd;
    for (std::string& path : pathsOnce()) {
        if (m_work.listed(path)) {
            m_work.fail(path, Texts::tr("The item is in the list already."));
            continue;
        }
        if (const QString reason = refusal(path); reason.isEmpty()) {
            toAdd.push_back(path);
        } else if (!takeInHidden(path)) {
            m_work.fail(path, reason);
            continue;
        }
        wanted.push_back(std::move(path));
    }
    addAll(toAdd);
    for (const std::string& path : wanted)
        if (const ListedFile file = m_work.listedInAnyForm(path))
            choose(file, path);
        else
            m_work.fail(path, Texts::tr("The item could not be added."));
    if (group)
        m_work.controller.moveFiles(m_chosen, group->groupID().value_or(CurrentGroup::allFiles));
    m_work.controller.saveDataToDisk();
    for (const ListedFile& file : m_chosen)
        m_work.caller.itemDone(m_pathOf[file.get()], std::string(file->path()));
}

void ItemRequests::remove() {
    for (const std::string& path : pathsOnce())
        if (const ListedFile file = m_work.listed(path))
            choose(file, path);
        else
            m_work.fail(path, Texts::tr("The item is not in the list."));
    if (m_chosen.empty())
        return;
    Files hidden;
    std::ranges::copy_if(m_chosen, std::back_inserter(hidden),
                         [](const ListedFile& file) { return file->state() == File::Hidden; });
    m_work.presenter.holdMessages();
    m_work.controller.tryToRemoveFiles(m_chosen);
    tellHeldMessages(m_work, {});
    const auto isVisible = [](const ListedFile& file) { return file->state() == File::Visible; };
    const bool someRemoved = !m_work.controller.files().contains(m_chosen.front());
    if (!someRemoved && std::ranges::none_of(hidden, isVisible)) {
        m_work.caller.message(Texts::tr("Nothing was removed."));
        m_work.status = RequestStatus::Refused;
        return;
    }
    // Either all are off the list, or what was hidden is back.
    for (const ListedFile& file : someRemoved ? m_chosen : hidden)
        if (someRemoved || isVisible(file))
            m_work.caller.itemDone(m_pathOf[file.get()], std::string(file->path()));
        else
            m_work.status = RequestStatus::SomeFailed;
    if (!someRemoved)
        m_work.caller.message(
            Texts::tr("The items that were hidden were brought back, and all stay in the list."));
}

void ItemRequests::hide() {
    std::vector<std::string> wanted;
    std::vector<std::string> toAdd;
    for (std::string& path : pathsOnce()) {
        if (!m_work.listed(path)) {
            if (const QString reason = refusal(path); !reason.isEmpty()) {
                m_work.fail(path, reason);
                continue;
            }
            toAdd.push_back(path);
        }
        wanted.push_back(std::move(path));
    }
    addAll(toAdd);
    for (const std::string& path : wanted)
        if (const ListedFile file = m_work.listed(path))
            choose(file, path);
        else
            m_work.fail(path, Texts::tr("The item could not be added."));
    moveChosen(BatchReport::Move::Hide);
}

void ItemRequests::unhide() {
    for (const std::string& path : pathsOnce()) {
        if (!m_work.listed(path))
            takeInHidden(path);
        if (const ListedFile file = m_work.listedInAnyForm(path))
            choose(file, path);
        else if (openItemAt(path))
            m_work.fail(path, Texts::tr("Item is not hidden."));
        else
            m_work.fail(path, notThereReason(errno));
    }
    moveChosen(BatchReport::Move::Unhide);
}

void ItemRequests::choose(const ListedFile& file, const std::string& path) {
    if (m_pathOf.emplace(file.get(), path).second)
        m_chosen.push_back(file);
}

void ItemRequests::moveChosen(BatchReport::Move move) {
    if (m_chosen.empty())
        return;
    HideOperations& operations = m_work.controller.hideOperations();
    const bool collects = !m_work.isInteractive();
    BatchReport report(m_work, move, std::move(m_pathOf));
    operations.clearErrorList();
    if (move == BatchReport::Move::Hide)
        operations.hideFiles(m_chosen, collects);
    else
        operations.unhideFiles(m_chosen, collects);
    operations.clearErrorList();
    report.tellLastBatch(m_chosen);
    report.finish();
}

} // namespace veilkeep
