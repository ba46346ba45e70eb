#include "tests/platform/linux/ConsentAgent.h"

#include <stdexcept>

namespace veilkeep::test {
namespace {

const QString beginMethod = QStringLiteral("BeginAuthentication");

} // namespace

ConsentAgent::ConsentAgent(pid_t process, Person person)
    : m_person(person), m_service(QString(), [this](const QDBusMessage& call) { return answer(call); }) {
    registerPolkitTypes();
    const PolkitSubject subject = {
        QStringLiteral("unix-process"),
        {{QStringLiteral("pid"), static_cast<uint>(process)}, {QStringLiteral("start-time"), qulonglong(0)}}};
    const QDBusMessage reply =
        callPolkit(QStringLiteral("RegisterAuthenticationAgent"),
                   {QVariant::fromValue(subject), QStringLiteral("C"), QStringLiteral("/agent")});
    if (reply.type() != QDBusMessage::ReplyMessage)
        throw std::runtime_error("no agent: " + reply.errorMessage().toStdString());
}

std::size_t ConsentAgent::questions() const {
    return m_service.calls(beginMethod).size();
}

QDBusMessage ConsentAgent::answer(const QDBusMessage& call) {
    if (call.member() != beginMethod)
        return call.createReply();
    if (m_person == Person::Dismisses)
        return call.createErrorReply(QStringLiteral("org.freedesktop.PolicyKit1.Error.Cancelled"),
                                     QStringLiteral("dismissed"));
    const QVariant cookie = call.arguments().value(4);
    const PolkitSubject identity = {QStringLiteral("unix-user"), {{QStringLiteral("uid"), 0U}}};
    callPolkit(QStringLiteral("AuthenticationAgentResponse2"), {0U, cookie, QVariant::fromValue(identity)});
    return call.createReply();
}

QDBusMessage ConsentAgent::callPolkit(const QString& method, const QVariantList& arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.PolicyKit1"), QStringLiteral("/org/freedesktop/PolicyKit1/Authority"),
        QStringLiteral("org.freedesktop.PolicyKit1.Authority"), method);
    message.setArguments(arguments);
    return m_service.connection().call(message);
}

} // namespace veilkeep::test
