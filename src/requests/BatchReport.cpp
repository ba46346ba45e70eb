#include "requests/BatchReport.h"

#include "format/ErrorText.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(BatchReport)
};

} // namespace

BatchReport::BatchReport(RequestWork& work, Move move, Names names)
    : m_work(work), m_move(move), m_names(std::move(names)) {
    m_work.presenter.holdMessages();
}

std::string BatchReport::nameOf(const ListedFile& file) const {
    const auto name = m_names.find(file.get());
    return name == m_names.end() ? std::string(file->originalPath()) : name->second;
}

void BatchReport::tellLastBatch() {
    const HideOperations& operations = m_work.controller.hideOperations();
    for (const MovedItem& item : operations.lastBatch())
        tellOutcome(item);
    for (const Error& trouble : operations.lastBatchTroubles())
        m_work.fail(
            trouble.path,
            Texts::tr("what was done here may not survive a power cut: %1").arg(errorReason(trouble)));
}

void BatchReport::tellLastBatch(const FilesViewController::Files& wanted) {
    tellLastBatch();
    for (std::size_t rest = m_work.controller.hideOperations().lastBatch().size(); rest < wanted.size();
         ++rest)
        fail(wanted[rest], workerErrorText(WorkerError::Unknown));
}

void BatchReport::fail(const ListedFile& file, const QString& reason) {
    m_work.fail(nameOf(file), reason);
    m_reasonsTold.push_back(reason);
}

void BatchReport::tellOutcome(const MovedItem& item) {
    if (item.errorCode == static_cast<int>(WorkerError::Cancelled) && m_work.progress.isCancelled()) {
        ++m_leftAlone;
        m_work.status = RequestStatus::SomeFailed;
        return;
    }
    const bool hasFailed = item.errorCode != 0 || !item.reason.isEmpty();
    const bool cameBackLater =
        m_move == Move::Unhide && item.file->state() == File::Visible; // with its folder
    if (hasFailed && !cameBackLater)
        fail(item.file, item.reason.isEmpty() ? workerErrorText(item.errorCode) : item.reason);
    else if (item.wasMoved || hasFailed)
        m_work.caller.itemDone(nameOf(item.file), std::string(item.file->path()));
    else if (m_names.contains(item.file.get()))
        fail(item.file, m_move == Move::Hide ? workerErrorText(WorkerError::AlreadyHidden)
                                             : Texts::tr("Item is not hidden."));
}

void BatchReport::finish() {
    tellHeldMessages(m_work, m_reasonsTold);
    if (m_leftAlone > 0)
        m_work.caller.message(Texts::tr("interrupted; items left as they are: %1").arg(m_leftAlone));
}

void tellHeldMessages(RequestWork& work, const std::vector<QString>& told) {
    std::vector<QString> messages;
    for (const Alert& alert : work.presenter.takeMessages()) {
        // Its items were told one by one.
        const QString message = alert.errors.empty() ? messageText(alert) : alert.title;
        if (std::ranges::find(told, alert.message) != told.end() ||
            std::ranges::find(messages, message) != messages.end())
            continue;
        work.caller.message(message);
        messages.push_back(message);
    }
}

} // namespace veilkeep
