#pragma once

#include "alerts/AlertPresenter.h"

#include <QString>
#include <QStringList>

#include <deque>
#include <functional>
#include <optional>
#include <vector>

namespace veilkeep::test {

// One alert that is to come. What is absent or null is not looked at.
struct ExpectedAlert {
    QString title = {};
    QString answer = {}; // the button's title; null: open until it is cancelled
    std::optional<QString> message = {};
    std::optional<QStringList> buttons = {}; // their titles in order
    std::optional<Alert::Style> style = {};
    bool suppress = false;                   // switches the check box on
    std::function<void()> whileOpen = [] {}; // runs before the answer; after cancelOpen() that is cancelled
};

// Answers alerts from a script, in its order. An unexpected alert fails the test, and so does an expected one
// that has not come by the end. As a presenter with windows does, it shows the alerts of all threads on the
// main thread, which must have an event loop running or wait in serveOthers() for them.
class ScriptedPresenter : public AlertPresenter {
public:
    ScriptedPresenter() = default;
    ~ScriptedPresenter() override;
    ScriptedPresenter(const ScriptedPresenter&) = delete;
    ScriptedPresenter& operator=(const ScriptedPresenter&) = delete;

    void expect(ExpectedAlert alert) { m_expected.push_back(std::move(alert)); }

    // In the order in which they came, those of begin() as well.
    const std::vector<Alert>& shown() const { return m_shown; }
    int openAlerts() const { return static_cast<int>(m_open.size()); }

    AlertAnswer run(const Alert& alert) override;
    void begin(const Alert& alert) override; // to be expected like others, with the answer of its only button
    void cancelOpen() override;
    void serveOthers() override;

private:
    struct OpenAlert {
        bool cancelled = false;
    };

    AlertAnswer show(const Alert& alert);
    std::optional<ExpectedAlert> nextFor(const Alert& alert);

    // The main thread's.
    std::deque<ExpectedAlert> m_expected;
    std::vector<Alert> m_shown;
    std::vector<OpenAlert*> m_open;
};

} // namespace veilkeep::test
