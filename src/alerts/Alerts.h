#pragma once

#include "alerts/AlertPresenter.h"
#include "core/storage/UserDefaults.h"

#include <QString>

#include <atomic>

namespace veilkeep {

// The one door through which questions and messages go to the user. The panel functions answer 1 for the
// default button, 0 for the alternate and -1 for the other one; alert objects answer 1000 for their first
// button, 1001 for the second and so on. A null title means that there is no such button. While nobody is
// there everything is answered with its cancelling button, and nothing is shown.
class Alerts {
public:
    static constexpr int firstButton = 1000; // of alert objects

    // Neither is owned.
    Alerts(AlertPresenter& presenter, UserDefaults& defaults);

    // One after the other, from any thread: while one is up, other threads wait, but never the thread that
    // shows it for itself.
    int ADRunAlertSheet(Alert::Window window, const QString& title, const QString& message,
                        const QString& defaultButton, const QString& alternateButton = {},
                        const QString& otherButton = {});
    int ADRunInformationalAlertSheet(Alert::Window window, const QString& title, const QString& message,
                                     const QString& defaultButton, const QString& alternateButton = {},
                                     const QString& otherButton = {});
    int ADRunCriticalAlertSheet(Alert::Window window, const QString& title, const QString& message,
                                const QString& defaultButton, const QString& alternateButton = {},
                                const QString& otherButton = {});

    // Main thread. With a suppression key that the user defaults know, the box's answer is stored under it.
    int ADRunWarningAlert(const QString& title, const QString& informativeText, const QString& firstButton,
                          const QString& secondButton, const QString& thirdButton,
                          const char* suppressionKey = nullptr);

    // An alert object of any kind, its buttons numbered from 1000 in their order. Main thread.
    int runAlert(Alert alert, const QStringList& buttons);

    // A message that nobody waits for.
    void beginInformationalAlertSheet(const QString& title, const QString& message);

    // True: the open alert and all that come are answered with their cancelling buttons. Main thread.
    void setNobodyThere(bool nobodyThere);
    bool isNobodyThere() const { return m_nobodyThere; }

private:
    int runPanel(Alert alert, const QString& defaultButton, const QString& alternateButton,
                 const QString& otherButton);

    AlertPresenter& m_presenter;
    UserDefaults& m_defaults;
    std::atomic<bool> m_nobodyThere = false;
};

} // namespace veilkeep
