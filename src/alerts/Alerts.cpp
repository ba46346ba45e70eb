#include "alerts/Alerts.h"

#include "alerts/OneAlertLock.h"
#include "core/log/Log.h"

#include <QCoreApplication>
#include <QScopeGuard>
#include <QThread>

#include <cassert>

namespace veilkeep {
namespace {

bool isMainThread() {
    const QCoreApplication* const application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread();
}

Alert alertObject(Alert alert, const QStringList& titles) {
    for (const QString& title : titles)
        if (!title.isNull())
            alert.buttons.push_back({title, Alerts::firstButton + static_cast<int>(alert.buttons.size())});
    return alert;
}

} // namespace

Alerts::Alerts(AlertPresenter& presenter, UserDefaults& defaults)
    : m_presenter(presenter), m_defaults(defaults) {}

int Alerts::ADRunAlertSheet(Alert::Window window, const QString& title, const QString& message,
                            const QString& defaultButton, const QString& alternateButton,
                            const QString& otherButton) {
    return runPanel(Alert::Style::Plain, window, title, message,
                    {defaultButton, alternateButton, otherButton});
}

int Alerts::ADRunInformationalAlertSheet(Alert::Window window, const QString& title, const QString& message,
                                         const QString& defaultButton, const QString& alternateButton,
                                         const QString& otherButton) {
    return runPanel(Alert::Style::Informational, window, title, message,
                    {defaultButton, alternateButton, otherButton});
}

int Alerts::ADRunCriticalAlertSheet(Alert::Window window, const QString& title, const QString& message,
                                    const QString& defaultButton, const QString& alternateButton,
                                    const QString& otherButton) {
    return runPanel(Alert::Style::Critical, window, title, message,
                    {defaultButton, alternateButton, otherButton});
}

int Alerts::runPanel(Alert::Style style, Alert::Window window, const QString& title, const QString& message,
                     const Buttons& buttons) {
    Alert panel;
    panel.style = style;
    panel.window = window;
    panel.title = title;
    panel.message = message;
    panel.buttons.push_back(
        {buttons.defaultButton.isNull() ? QCoreApplication::translate("Alerts", "OK") : buttons.defaultButton,
         defaultAnswer});
    if (!buttons.alternateButton.isNull())
        panel.buttons.push_back({buttons.alternateButton, alternateAnswer});
    if (!buttons.otherButton.isNull())
        panel.buttons.push_back({buttons.otherButton, otherAnswer});
    return ADRunSheet(std::move(panel)).code;
}

AlertAnswer Alerts::ADRunSheet(Alert panel) {
    OneAlertLock& lock = OneAlertLock::onlyOneAlertSheetAtATimeLock();
    const unsigned int departures = m_departures;
    OneAlertLock::Waiting waiting{[&] { return hasLeftSince(departures); }, {}};
    if (isMainThread())
        waiting.betweenLooks = [this] { m_presenter.serveOthers(); };
    if (!lock.take(waiting))
        return unansweredBy(panel);
    const auto release = qScopeGuard([&lock] { lock.release(); });
    return run(std::move(panel), departures, [&] { lock.showOnThisThread(); });
}

int Alerts::ADRunWarningAlert(const QString& title, const QString& informativeText, const QString& first,
                              const QString& second, const QString& third, const char* suppressionKey) {
    Alert alert;
    alert.style = Alert::Style::Warning;
    alert.title = title;
    alert.message = informativeText;
    alert.offersSuppression = suppressionKey != nullptr;
    const AlertAnswer answer = answerTo(std::move(alert), {first, second, third});
    if (suppressionKey && answer.suppress) {
        m_defaults.set(suppressionKey, true);
        if (const auto stored = m_defaults.synchronize(); !stored)
            logError("That an alert is not to be shown again is not stored", stored.error());
    }
    return answer.code;
}

AlertAnswer Alerts::answerTo(Alert alert, const QStringList& buttons) {
    return run(alertObject(std::move(alert), buttons), m_departures, [] {});
}

AlertAnswer Alerts::run(Alert alert, unsigned int departures, const std::function<void()>& whenShown) {
    alert.beginShowing = [this, departures, whenShown] {
        if (hasLeftSince(departures))
            return false;
        whenShown();
        return true;
    };
    assert(!alert.buttons.empty());
    if (hasLeftSince(departures))
        return unansweredBy(alert);
    const AlertAnswer answer = m_presenter.run(alert);
    return hasLeftSince(departures) ? unansweredBy(alert) : answer;
}

AlertAnswer Alerts::unansweredBy(const Alert& alert) const {
    logLine("Nobody was there to answer: " + alert.title.toStdString());
    return {alert.codeWhenCancelled(), false, true};
}

void Alerts::beginInformationalAlertSheet(const QString& title, const QString& message) {
    if (m_nobodyThere)
        return logLine("Nobody was there to read: " + title.toStdString() + " " + message.toStdString());
    Alert alert;
    alert.style = Alert::Style::Informational;
    alert.window = Alert::Window::Main;
    alert.title = title;
    alert.message = message;
    m_presenter.begin(alertObject(std::move(alert), {QCoreApplication::translate("Alerts", "OK")}));
}

void Alerts::setNobodyThere(bool nobodyThere) {
    if (m_nobodyThere.exchange(nobodyThere) == nobodyThere || !nobodyThere)
        return;
    ++m_departures;
    OneAlertLock::onlyOneAlertSheetAtATimeLock().wakeWaiting();
    m_presenter.cancelOpen();
}

} // namespace veilkeep
