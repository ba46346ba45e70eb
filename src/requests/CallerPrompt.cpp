#include "requests/CallerPrompt.h"

#include <QCoreApplication>
#include <QScopeGuard>
#include <QScopedValueRollback>

namespace veilkeep {

void CallerPrompt::run(PasswordManager& manager, const QString&, const QString& line) {
    const QScopedValueRollback open(m_isOpen, true);
    m_wrongEntries = 0;
    while (m_isOpen) {
        std::optional<QString> entered;
        {
            const QScopedValueRollback asking(m_isAsking, true);
            entered = m_caller.askPassword(line, m_wrongEntries);
        }
        if (!m_isOpen)
            return; // taken back: an answer no longer counts
        if (entered)
            manager.okClick(*entered);
        else
            manager.cancelClick();
    }
}

void CallerPrompt::close() {
    m_isOpen = false;
    if (m_isAsking)
        m_caller.cancelQuestion();
}

bool isAllowedByCaller(Gate& gate, PasswordManager& passwords, RequestCaller& caller) {
    CallerPrompt prompt(caller);
    const auto ownPrompt = qScopeGuard([&, own = passwords.prompt()] { passwords.setPrompt(own); });
    passwords.setPrompt(&prompt);
    return gate.operationAllowed();
}

bool isGivenByCaller(PasswordManager& passwords, RequestCaller& caller) {
    CallerPrompt prompt(caller);
    const auto ownPrompt = qScopeGuard([&, own = passwords.prompt()] { passwords.setPrompt(own); });
    passwords.setPrompt(&prompt);
    if (passwords.showModalWindow() != 0)
        return true;
    caller.message(QCoreApplication::translate("CallerPrompt", "The password was not given."));
    return false;
}

} // namespace veilkeep
