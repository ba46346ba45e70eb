#include "app/ADApp.h"
#include "app/ADAppParts.h"
#include "app/UncaughtExceptions.h"

#include "core/log/Log.h"
#include "filelist/Texts.h"
#include "session/ProblemReport.h"

#include <QClipboard>
#include <QThread>

#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace veilkeep {

void ADApp::reportException(const UncaughtException& exception) {
    if (!exception.isToBeIgnored())
        handleGenericException(exception);
}

void ADApp::handleGenericException(const UncaughtException& exception) {
    if (auto* const application = qobject_cast<ADApp*>(instance()))
        application->handleGenericException(exception, false);
}

void ADApp::handleGenericException(const UncaughtException& exception, bool manualThreadExit) {
    const bool isMainThread = QThread::currentThread() == thread();
    logLine("Handle Exception " + exception.name + ": " + exception.reason +
            " in main thread = " + (isMainThread ? "1" : "0"));
    if (isMainThread)
        return startReport(exception);
    sendFeedbackInThreadForException(exception);
    if (manualThreadExit)
        ::pthread_exit(nullptr);
}

void ADApp::sendFeedbackInThreadForException(const UncaughtException& exception) {
    QMetaObject::invokeMethod(
        this, [this, exception] { startReport(exception); }, Qt::QueuedConnection);
}

void ADApp::sendFeedback() {
    ProblemReport report;
    report.reason = tr("Feedback");
    offerReport(
        std::move(report),
        tr("A report on this program and its desktop was written, for you to add what you want to say."));
}

// One at a time: an exception may come with each drawing of a window.
void ADApp::startReport(const UncaughtException& exception) {
    if (m_parts && m_parts->report.isOpen())
        return;
    ProblemReport report;
    report.reason = QString::fromStdString(
        exception.reason.empty() ? exception.name : exception.name + ": " + exception.reason);
    report.stack = exception.stack;
    offerReport(std::move(report), tr("Something went wrong, and a problem report was written."));
}

void ADApp::reportLastCrash() {
    const auto crash = m_parts ? m_parts->runNote.takeLastCrash() : std::nullopt;
    if (!crash)
        return;
    ProblemReport report;
    report.reason = QString::fromStdString(crash->reason());
    report.stackOfFormerRun = crash->stack;
    if (offerReport(std::move(report),
                    tr("%1 ended unexpectedly the last time, and a problem report was written.")
                        .arg(veilkeep::applicationName())))
        m_parts->runNote.forgetLastCrash();
}

// The user decides what becomes of it.
bool ADApp::offerReport(ProblemReport report, const QString& why) {
    if (!m_parts)
        return false; // before there is anything to tell of; the log has its line
    report.displayPlatform = platformName();
    for (const ListedFile& file : m_parts->list.files().files().all())
        report.itemNames.emplace_back(file->name());
    for (const ListedGroup& group : m_parts->list.groups().groups())
        report.itemNames.emplace_back(group->name());
    const std::string content = report.text();
    const auto written = ProblemReport::write(content);
    if (!written) {
        m_parts->tellTrouble(tr("The problem report could not be written."), written.error());
        return false;
    }
    const QString text = QString::fromStdString(content);
    m_parts->report.show(why, text, *written, [this, path = *written, text](ReportWindow::Action action) {
        actOnReport(action, path, text);
    });
    return true;
}

void ADApp::actOnReport(ReportWindow::Action action, const std::string& path, const QString& text) {
    switch (action) {
    case ReportWindow::Action::Open:
        if (const auto opened = m_parts->applications.open(path); !opened)
            m_parts->tellTrouble(tr("The problem report could not be opened."), opened.error());
        return;
    case ReportWindow::Action::Copy:
        return clipboard()->setText(text);
    case ReportWindow::Action::Delete:
        if (::unlink(path.c_str()) != 0)
            m_parts->tellTrouble(tr("The problem report could not be deleted."),
                                 Error::system("unlink", path, errno));
        return;
    case ReportWindow::Action::Close:
        return;
    }
}

} // namespace veilkeep
