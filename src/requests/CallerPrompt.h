#pragma once

#include "platform/Request.h"
#include "prefs/PasswordManager.h"
#include "session/Gate.h"

namespace veilkeep {

// Asks whoever made a request for the password. Lives for that request; main thread.
class CallerPrompt : public PasswordPrompt {
public:
    explicit CallerPrompt(RequestCaller& caller) : m_caller(caller) {} // not owned

    void run(PasswordManager& manager, const QString& title, const QString& line) override;
    void showWrongEntries(int count) override { m_wrongEntries = count; }
    void close() override;

private:
    RequestCaller& m_caller;
    int m_wrongEntries = 0;
    bool m_isOpen = false;
    bool m_isAsking = false;
};

// What the gate answers when the prompt of its passwords is the caller's.
bool isAllowedByCaller(Gate& gate, PasswordManager& passwords, RequestCaller& caller);

// Whether the caller knows the password; he is told where it was not given.
bool isGivenByCaller(PasswordManager& passwords, RequestCaller& caller);

} // namespace veilkeep
