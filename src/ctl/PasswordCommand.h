#pragma once

#include "core/storage/UserDefaults.h"
#include "ctl/TerminalCaller.h"
#include "ctl/TerminalOutput.h"
#include "ctl/TerminalQuestions.h"
#include "prefs/PasswordManager.h"

#include <QString>

#include <optional>
#include <string_view>

namespace veilkeep {

// "password": sets, changes, checks or switches off the password in the user's settings, whoever owns the
// list. Nothing of what it is given is owned. Main thread.
class PasswordCommand {
public:
    PasswordCommand(UserDefaults& defaults, TerminalOutput& output, TerminalQuestions& questions,
                    TerminalCaller& caller)
        : m_defaults(defaults), m_output(output), m_questions(questions), m_caller(caller) {}

    static bool isAction(std::string_view word); // "set", "change", "off" or "check"

    RequestStatus run(std::string_view action);

private:
    RequestStatus set();
    RequestStatus change();
    RequestStatus switchOff();
    RequestStatus check();

    RequestStatus told(const QString& message, RequestStatus status);
    std::optional<QString> newOne();
    RequestStatus afterStoring(const Result<void>& stored);

    UserDefaults& m_defaults;
    TerminalOutput& m_output;
    TerminalQuestions& m_questions;
    TerminalCaller& m_caller;
    PasswordManager m_passwords{m_defaults};
};

} // namespace veilkeep
