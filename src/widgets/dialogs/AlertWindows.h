#pragma once

#include "alerts/AlertPresenter.h"
#include "widgets/dialogs/MainWindowAnswer.h"

#include <QObject>
#include <QPointer>

#include <vector>

namespace veilkeep {

class AlertWindow;

// Shows alerts as dialogs: on the main window where they belong to it and it can be seen, else before the
// whole application. Any thread may ask, and waits; what is shown belongs to the main thread.
class AlertWindows : public AlertPresenter {
public:
    explicit AlertWindows(MainWindowAnswer mainWindow);
    ~AlertWindows() override;
    AlertWindows(const AlertWindows&) = delete;
    AlertWindows& operator=(const AlertWindows&) = delete;

    AlertAnswer run(const Alert& alert) override;
    void begin(const Alert& alert) override;
    void cancelOpen() override;
    void serveOthers() override;

private:
    AlertAnswer runOnMainThread(const Alert& alert);
    void show(const Alert& alert);
    AlertWindow& makeWindow(const Alert& alert, QWidget* inFront); // that is above inFront

    MainWindowAnswer m_mainWindow;
    std::vector<QPointer<AlertWindow>> m_open;
    QObject m_mainThread; // of what other threads post
};

} // namespace veilkeep
