#include "ctl/RescueRun.h"

#include "core/base/PathText.h"
#include "core/names/HiddenName.h"
#include "core/protocol/WorkerError.h"
#include "format/ErrorText.h"
#include "format/PrintableName.h"

#include <QCoreApplication>

#include <iterator>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(RescueRun)
};

constexpr std::size_t mostUntold = 1000;

QString reasonOf(int error) {
    if (error == static_cast<int>(WorkerError::NoHiddenDirectory))
        return Texts::tr(
            "its .SYS_INDEX is no folder any more, or does not belong to, or is not open to, the same users "
            "as the folder around it");
    if (error == RescueMoves::pathTooLong)
        return Texts::tr(
            "its path is too long for an argument of a program; with --to DIRECTORY it is copied");
    return workerErrorText(error);
}

} // namespace

void RescueRun::moveAll(const HiddenFolders& folders) {
    m_total = folders.itemCount();
    folders.forEach(
        [this](const HiddenFolder& folder) { return moveFolder(folder), !m_caller.isCancelled(); });
    for (const std::string& place : m_places.unsettled())
        m_output.printPath(place);
}

void RescueRun::moveFolder(const HiddenFolder& folder) {
    for (std::size_t number = 0; number < folder.names.size() && !m_caller.isCancelled(); ++number) {
        move(folder, number);
        if (m_settled.size() >= mostUntold)
            settle(folder);
    }
    settle(folder);
}

void RescueRun::move(const HiddenFolder& folder, std::size_t number) {
    const std::string path = joinPath(folder.path, folder.names[number]);
    const bool hasNext = number + 1 < folder.names.size();
    m_output.showProgress(QStringLiteral("%1/%2  ").arg(m_cameBack + m_failed).arg(m_total) +
                          shownPath(path));
    const CloakWorkerResult result =
        m_moves.move(path, hasNext ? joinPath(folder.path, folder.names[number + 1]) : std::string());
    if (result.errorCode() != 0)
        return fail(path, result.errorCode());
    ++m_cameBack;
    tellName(path, result.newFileName());
    std::vector<std::string> settled = m_places.cameBack(path, result.newFileName());
    m_settled.insert(m_settled.end(), std::move_iterator(settled.begin()), std::move_iterator(settled.end()));
}

void RescueRun::tellName(const std::string& hiddenPath, const std::string& place) {
    const std::string_view hidden = lastPathComponent(hiddenPath), name = lastPathComponent(place);
    if (name == hidden && scrambledName(hidden) != hidden)
        m_output.printError(hiddenPath, Texts::tr("keeps its hidden name").toStdString());
    else if (name != hidden && name != visibleName(hidden))
        m_output.printError(hiddenPath, Texts::tr("its place is taken, so it is called %1 now")
                                            .arg(QString::fromStdString(quotedName(name)))
                                            .toStdString());
}

void RescueRun::fail(const std::string& path, int error) {
    ++m_failed;
    m_hadTooFewRights |= error == static_cast<int>(WorkerError::NotEnoughRights);
    m_output.printError(path, reasonOf(error).toStdString());
}

void RescueRun::settle(const HiddenFolder& folder) {
    for (const Error& error : syncAfterRescue(folder.path)) {
        m_isDurable = false;
        m_output.printError(error.path, Texts::tr("what came back there may not survive a power cut: %1")
                                            .arg(errorReason(error))
                                            .toStdString());
    }
    for (const std::string& place : m_settled)
        m_output.printPath(place);
    m_settled.clear();
    (void)m_output.flush(); // its failure is told, and known at the end as well
}

} // namespace veilkeep
