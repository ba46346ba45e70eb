#include "requests/CallerPresenter.h"

#include "filelist/MainThread.h"
#include "platform/EventLoop.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace veilkeep {
namespace {

// The message, and what a window would show below it.
QString bodyText(const Alert& alert) {
    QStringList lines;
    if (!alert.message.isEmpty())
        lines.append(alert.message);
    for (const ErrorEntry& entry : alert.errors)
        lines.append(QStringLiteral("%1: %2").arg(entry.fileName, entry.errorCode));
    lines.append(alert.applications);
    return lines.join(QLatin1Char('\n'));
}

Question questionOf(const Alert& alert) {
    Question question{alert.title, bodyText(alert), {}};
    for (const Alert::Button& button : alert.buttons)
        question.buttons.push_back(button.title);
    return question;
}

} // namespace

QString messageText(const Alert& alert) {
    const QString body = bodyText(alert);
    return body.isEmpty() ? alert.title : alert.title + QLatin1Char('\n') + body;
}

void CallerPresenter::holdMessages() {
    m_isHolding = true;
}

std::vector<Alert> CallerPresenter::takeMessages() {
    m_isHolding = false;
    return std::exchange(m_held, {});
}

AlertAnswer CallerPresenter::run(const Alert& alert) {
    AlertAnswer answer;
    MainThread::runAndWait([&] { answer = runOnMainThread(alert); });
    return answer;
}

AlertAnswer CallerPresenter::runOnMainThread(const Alert& alert) {
    if (!m_caller)
        return m_own ? m_own->run(alert) : AlertAnswer{alert.codeWhenCancelled(), false, true};
    if (!alert.beginShowing())
        return {alert.codeWhenCancelled()};
    if (m_isHolding && alert.buttons.size() == 1) {
        m_held.push_back(alert);
        return {alert.codeWhenCancelled()};
    }
    const std::size_t number = m_caller->ask(questionOf(alert));
    return {alert.buttons[std::min(number, alert.buttons.size() - 1)].code};
}

void CallerPresenter::begin(const Alert& alert) {
    MainThread::runAndWait([&] {
        if (m_caller)
            m_caller->message(messageText(alert));
        else if (m_own)
            m_own->begin(alert);
    });
}

void CallerPresenter::cancelOpen() {
    if (m_caller)
        m_caller->cancelQuestion();
    if (m_own)
        m_own->cancelOpen();
}

void CallerPresenter::serveOthers() {
    wakeEventLoop();
    if (m_own)
        m_own->serveOthers();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 50); // alerts of other threads
}

} // namespace veilkeep
