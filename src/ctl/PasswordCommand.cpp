#include "ctl/PasswordCommand.h"

#include "core/storage/DefaultsKeys.h"
#include "filelist/Texts.h"
#include "format/ErrorText.h"
#include "requests/CallerPrompt.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

namespace veilkeep {
namespace {

constexpr std::string_view actions[] = {"set", "change", "off", "check"};

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(PasswordCommand)
};

// Why the application would not be protected by it; empty where it would.
QString faultOf(const QString& password) {
    if (password.isEmpty())
        return Texts::tr("the new password is empty; nothing was changed");
    if (!PasswordManager::isAscii(password))
        return Texts::tr(
            "the new password has a character outside of ASCII and would protect nothing, since every other\n"
            "password with such a character would be taken for it; nothing was changed");
    return {};
}

} // namespace

bool PasswordCommand::isAction(std::string_view word) {
    return std::ranges::find(actions, word) != std::end(actions);
}

RequestStatus PasswordCommand::run(std::string_view action) {
    if (action == "set")
        return set();
    if (action == "change")
        return change();
    return action == "off" ? switchOff() : check();
}

RequestStatus PasswordCommand::told(const QString& message, RequestStatus status) {
    m_output.printMessage(message);
    return status;
}

RequestStatus PasswordCommand::set() {
    if (m_passwords.isPasswordEnabled())
        return told(Texts::tr("a password is set already; change it with 'veilkeepctl password change'"),
                    RequestStatus::Refused);
    const auto password = newOne();
    if (!password)
        return RequestStatus::Refused;
    m_defaults.set(defaultsKey::passwordEnabled, true); // stored together with the digest
    return afterStoring(m_passwords.setPassword(*password));
}

RequestStatus PasswordCommand::change() {
    if (!m_passwords.isPasswordEnabled())
        return told(Texts::tr("no password is set"), RequestStatus::Refused);
    if (!isGivenByCaller(m_passwords, m_caller))
        return RequestStatus::Refused;
    const auto password = newOne();
    return password ? afterStoring(m_passwords.setPassword(*password)) : RequestStatus::Refused;
}

RequestStatus PasswordCommand::switchOff() {
    if (!m_passwords.isPasswordEnabled())
        return told(Texts::tr("no password is set"), RequestStatus::AllWell);
    if (!isGivenByCaller(m_passwords, m_caller))
        return RequestStatus::Refused;
    m_defaults.set(defaultsKey::passwordEnabled, false);
    return afterStoring(m_defaults.synchronize());
}

RequestStatus PasswordCommand::check() {
    if (!m_passwords.isPasswordEnabled())
        return told(Texts::tr("no password is set"), RequestStatus::AllWell);
    return isGivenByCaller(m_passwords, m_caller) ? RequestStatus::AllWell : RequestStatus::Refused;
}

std::optional<QString> PasswordCommand::newOne() {
    const auto password =
        m_questions.askPassword(Texts::tr("Enter the new %1 password:").arg(applicationName()), 0);
    if (!password)
        return std::nullopt;
    if (const QString fault = faultOf(*password); !fault.isEmpty()) {
        m_output.printMessage(fault);
        return std::nullopt;
    }
    if (m_questions.takesPasswordsFromInput())
        return password;
    const auto again = m_questions.askPassword(Texts::tr("Enter it again:"), 0);
    if (!again)
        return std::nullopt;
    if (*again != *password) {
        m_output.printMessage(Texts::tr("the two entries differ; nothing was changed"));
        return std::nullopt;
    }
    return password;
}

RequestStatus PasswordCommand::afterStoring(const Result<void>& stored) {
    if (stored)
        return RequestStatus::AllWell;
    m_output.printError(stored.error().path, errorReason(stored.error()).toStdString());
    return RequestStatus::SomeFailed;
}

} // namespace veilkeep
