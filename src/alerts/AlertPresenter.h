#pragma once

#include "alerts/Alert.h"

namespace veilkeep {

// Shows alerts: a message box in the desktop application, lines on a terminal in veilkeepctl, a script in
// tests. Any thread may ask; a presenter that has windows shows them on the main thread.
class AlertPresenter {
public:
    virtual ~AlertPresenter() = default;

    // Returns once it is answered. Alert::beginShowing() comes first.
    virtual AlertAnswer run(const Alert& alert) = 0;

    // Shows a message of one button and returns at once.
    virtual void begin(const Alert& alert) = 0;

    // Answers every alert that is open with its cancelling button. Main thread.
    virtual void cancelOpen() = 0;

    // Called again and again on the main thread while it waits for another thread's alert to be answered:
    // shows and answers what other threads asked for.
    virtual void serveOthers() = 0;

protected:
    AlertPresenter() = default;
    AlertPresenter(const AlertPresenter&) = default;
    AlertPresenter& operator=(const AlertPresenter&) = default;
};

} // namespace veilkeep
