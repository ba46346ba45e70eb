#pragma once

#include "alerts/AlertPresenter.h"
#include "platform/Request.h"

#include <vector>

namespace veilkeep {

// Shows alerts to whoever made the request that is being worked on, and to the application's own presenter
// while there is none. Made by the program's wiring. Alerts may come on any thread, the rest belongs to the
// main thread.
class CallerPresenter : public AlertPresenter {
public:
    // Not owned. Without one, alerts outside of requests are answered with their cancelling button.
    explicit CallerPresenter(AlertPresenter* own) : m_own(own) {}

    void setCaller(RequestCaller* caller) { m_caller = caller; } // not owned; null: no request runs

    // From now on alerts of one button are kept for takeMessages() and answered at once: what became of each
    // item is told afterwards, and nobody should be told twice.
    void holdMessages();
    std::vector<Alert> takeMessages(); // shows them again from now on

    AlertAnswer run(const Alert& alert) override;
    void begin(const Alert& alert) override;
    void cancelOpen() override;
    void serveOthers() override;

private:
    AlertAnswer runOnMainThread(const Alert& alert);

    AlertPresenter* m_own;
    RequestCaller* m_caller = nullptr;
    bool m_isHolding = false;
    std::vector<Alert> m_held;
};

// What an alert says, on lines of its own.
QString messageText(const Alert& alert);

} // namespace veilkeep
