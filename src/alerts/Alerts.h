#pragma once

#include "alerts/AlertPresenter.h"
#include "core/storage/UserDefaults.h"

#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>
#include <utility>

namespace veilkeep {

// The one door through which questions and messages go to the user. The panel functions answer with one
// of the three codes below; alert objects answer 1000 for their first button, 1001 for the second and so on.
// A null title means that there is no such button, but the default one reads "OK" then. While nobody is there
// everything is answered with its cancelling button, and nothing is shown but a line in the log.
class Alerts {
public:
    static constexpr int defaultAnswer = 1, alternateAnswer = 0, otherAnswer = -1; // of panels
    static constexpr int firstButton = 1000;                                       // of alert objects

    // Neither is owned.
    Alerts(AlertPresenter& presenter, UserDefaults& defaults);

    // One after the other, from any thread: while one is up, other threads wait, but neither the one that
    // asked nor the one that shows it.
    int ADRunAlertSheet(Alert::Window window, const QString& title, const QString& message,
                        const QString& defaultButton, const QString& alternateButton = {},
                        const QString& otherButton = {});
    int ADRunInformationalAlertSheet(Alert::Window window, const QString& title, const QString& message,
                                     const QString& defaultButton, const QString& alternateButton = {},
                                     const QString& otherButton = {});
    int ADRunCriticalAlertSheet(Alert::Window window, const QString& title, const QString& message,
                                const QString& defaultButton, const QString& alternateButton = {},
                                const QString& otherButton = {});

    // With a suppression key the alert has a check box; where it was on, true is stored under the key at
    // once. Main thread.
    int ADRunWarningAlert(const QString& title, const QString& informativeText, const QString& first,
                          const QString& second, const QString& third, const char* suppressionKey = nullptr);

    // An alert object of any kind, its buttons numbered from 1000 in their order. Main thread.
    int runAlert(Alert alert, const QStringList& buttons) { return answerTo(std::move(alert), buttons).code; }
    AlertAnswer answerTo(Alert alert, const QStringList& buttons); // tells also whether it is the user's

    // A message that nobody waits for.
    void beginInformationalAlertSheet(const QString& title, const QString& message);

    // True: the open alerts, those that wait and all that come are answered with their cancelling buttons.
    // Main thread.
    void setNobodyThere(bool nobodyThere);
    bool isNobodyThere() const { return m_nobodyThere; }

private:
    struct Buttons {
        const QString &defaultButton, &alternateButton, &otherButton;
    };

    int runPanel(Alert::Style style, Alert::Window window, const QString& title, const QString& message,
                 const Buttons& buttons);
    AlertAnswer ADRunSheet(Alert panel);
    AlertAnswer run(Alert alert, unsigned int departures, const std::function<void()>& whenShown);
    AlertAnswer unansweredBy(const Alert& alert) const;

    // Whether nobody is there, or the user left since that many departures.
    bool hasLeftSince(unsigned int departures) const { return m_nobodyThere || m_departures != departures; }

    AlertPresenter& m_presenter;
    UserDefaults& m_defaults;
    std::atomic<bool> m_nobodyThere = false;
    std::atomic<unsigned int> m_departures = 0; // how often it became true
};

} // namespace veilkeep
