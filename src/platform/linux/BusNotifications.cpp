#include "platform/linux/BusNotifications.h"

#include "core/log/Log.h"

#include <QDBusPendingCallWatcher>
#include <QRegularExpression>

#include <cerrno>

namespace veilkeep {
namespace {

const QString notificationPath = QStringLiteral("/com/ostrel/Veilkeep");
const QString notificationInterface = QStringLiteral("com.ostrel.Veilkeep");

// A sender may have left the bus before it was looked up, as dbus-send has. One that says nothing but the
// name does no harm whoever it was.
bool isBelieved(const QDBusMessage& unixUser, const QString& object) {
    return SessionBusConnection::isOwnUser(unixUser) ||
           (object.isEmpty() && unixUser.type() == QDBusMessage::ErrorMessage);
}

} // namespace

void BusNotifications::listen() {
    if (isListening())
        return;
    m_waiting.clear();
    m_bus.emplace();
    m_isListening = m_bus->connection().connect(QString(), notificationPath, notificationInterface, QString(),
                                                this, SLOT(received(QDBusMessage)));
    // The bus is told of the wish without waiting. Whatever comes after this answer is heard.
    if (m_isListening)
        m_isListening =
            m_bus->askBus(QStringLiteral("NameHasOwner"), QStringLiteral("org.freedesktop.DBus")).type() ==
            QDBusMessage::ReplyMessage;
    if (!m_isListening)
        logLine("No notifications from other programs: the session bus cannot be reached.");
}

Result<void> BusNotifications::post(const QString& name, const QString& object) {
    static const QRegularExpression form(
        QStringLiteral("\\Acom\\.ostrel\\.Veilkeep\\.([A-Za-z][A-Za-z0-9]*)\\z"));
    const QRegularExpressionMatch match = form.match(name);
    if (!match.hasMatch())
        return Error{ErrorCode::InvalidArgument, "post", {}, 0};
    QDBusMessage signal =
        QDBusMessage::createSignal(notificationPath, notificationInterface, match.captured(1));
    if (!object.isEmpty())
        signal << object;
    if (!m_bus->connection().send(signal))
        return Error::system("post", {}, ENOTCONN);
    return {};
}

void BusNotifications::received(const QDBusMessage& signal) {
    const QVariantList arguments = signal.arguments();
    if (arguments.size() > 1 || (!arguments.isEmpty() && arguments.first().typeId() != QMetaType::QString))
        return;
    const QString name = signal.interface() + QLatin1Char('.') + signal.member();
    const QString object = arguments.value(0).toString();
    const QDBusMessage question =
        SessionBusConnection::busCall(QStringLiteral("GetConnectionUnixUser"), signal.service());
    m_waiting.push_back({m_bus->connection().asyncCall(question), name, object});
    auto* const answer = new QDBusPendingCallWatcher(m_waiting.back().unixUser, this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        passOn();
    });
}

// Watchers may tell of answers in another order than they came in.
void BusNotifications::passOn() {
    while (!m_waiting.empty() && m_waiting.front().unixUser.isFinished()) {
        const Waiting first = m_waiting.front();
        m_waiting.pop_front();
        if (isBelieved(first.unixUser.reply(), first.object))
            emit posted(first.name, first.object);
    }
}

} // namespace veilkeep
