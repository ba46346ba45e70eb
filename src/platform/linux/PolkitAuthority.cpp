#include "platform/linux/PolkitAuthority.h"

#include "core/log/Log.h"
#include "platform/linux/SystemBus.h"

#include <QDBusArgument>

#include <chrono>
#include <optional>
#include <utility>

namespace veilkeep {
namespace {

using Answer = RightsAuthority::Answer;
using Interaction = RightsAuthority::Interaction;

constexpr std::chrono::milliseconds limitWithoutQuestion = std::chrono::seconds(25);
constexpr uint allowUserInteraction = 1;
constexpr QLatin1String questionId("question"); // told apart from other programs' by the connection
constexpr QLatin1String temporaryIdKey("polkit.temporary_authorization_id");
constexpr QLatin1String retainsKey("polkit.retains_authorization_after_challenge");
constexpr QLatin1String dismissedKey("polkit.dismissed");

Answer answerFrom(const std::optional<PolkitResult>& result, Interaction interaction) {
    if (!result)
        return Answer::Unavailable;
    if (result->isAuthorized)
        return Answer::Granted;
    if (result->details.contains(dismissedKey))
        return Answer::Dismissed;
    if (!result->isChallenge)
        return Answer::Refused;
    if (!result->details.contains(retainsKey))
        return Answer::AskedEachRun;
    return interaction == Interaction::Allowed ? Answer::NoAgent : Answer::Refused;
}

QDBusMessage authorityCall(const QString& method) {
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.PolicyKit1"),
                                          QStringLiteral("/org/freedesktop/PolicyKit1/Authority"),
                                          QStringLiteral("org.freedesktop.PolicyKit1.Authority"), method);
}

} // namespace

PolkitAuthority::PolkitAuthority(Tick tick) : m_tick(std::move(tick)) {
    registerPolkitTypes();
}

// What the user would grant for a single time is not asked for here: it would be used up by the asking.
Answer PolkitAuthority::check(const std::string& action, Interaction interaction) {
    const auto held = ask(action, Interaction::Never);
    const bool asks = interaction == Interaction::Allowed && held && held->isChallenge &&
                      held->details.contains(retainsKey);
    if (!asks)
        return answerFrom(held, Interaction::Never);
    m_isCancelled = false;
    const Answer answer = answerFrom(ask(action, interaction), interaction);
    return m_isCancelled ? Answer::Dismissed : answer;
}

void PolkitAuthority::cancel() {
    if (!m_questionBus || std::exchange(m_isCancelled, true))
        return;
    QDBusMessage message = authorityCall(QStringLiteral("CancelCheckAuthorization"));
    m_questionBus->send(message << QString(questionId));
}

Answer PolkitAuthority::giveUp(const std::string& action) {
    const auto held = ask(action, Interaction::Never);
    if (!held)
        return Answer::Unavailable;
    const QString id = held->details.value(temporaryIdKey);
    const bool done =
        id.isEmpty() || call(QStringLiteral("RevokeTemporaryAuthorizationById"), {id}, Interaction::Never);
    return done ? Answer::Granted : Answer::Unavailable;
}

std::optional<PolkitResult> PolkitAuthority::ask(const std::string& action, Interaction interaction) {
    const QVariantList arguments = {QVariant::fromValue(PolkitSubject::thisProcess()),
                                    QString::fromStdString(action), QVariant::fromValue(PolkitDetails()),
                                    interaction == Interaction::Allowed ? allowUserInteraction : 0U,
                                    interaction == Interaction::Allowed ? QString(questionId) : QString()};
    const auto answer = call(QStringLiteral("CheckAuthorization"), arguments, interaction);
    if (!answer)
        return std::nullopt;
    return qdbus_cast<PolkitResult>(answer->value(0));
}

std::optional<QVariantList> PolkitAuthority::call(const QString& method, const QVariantList& arguments,
                                                  Interaction interaction) {
    QDBusMessage message = authorityCall(method);
    message.setArguments(arguments);
    const bool mayAsk = interaction == Interaction::Allowed;
    const SystemBus bus;
    m_questionBus = mayAsk ? &bus : nullptr;
    const QDBusMessage reply =
        bus.call(message, mayAsk ? std::nullopt : std::optional(limitWithoutQuestion), m_tick);
    m_questionBus = nullptr;
    if (reply.type() == QDBusMessage::ReplyMessage)
        return reply.arguments();
    logLine("polkit: " + reply.errorName().toStdString() + ": " + reply.errorMessage().toStdString());
    return std::nullopt;
}

} // namespace veilkeep
