#include "platform/linux/ApplicationOnBus.h"

#include "platform/linux/ActivationToken.h"
#include "platform/linux/BusRequest.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>

namespace veilkeep {
namespace {

constexpr QLatin1String applicationName("com.ostrel.Veilkeep");
constexpr QLatin1String applicationObject("/com/ostrel/Veilkeep");
constexpr QLatin1String applicationInterface("org.freedesktop.Application");
constexpr QLatin1String waylandToken("activation-token");
constexpr QLatin1String x11Token("desktop-startup-id");
constexpr qsizetype longestActionName = 255;
constexpr QLatin1String showItemsAction("show-items");

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(ApplicationOnBus)
};

// Older senders put every token under the older key.
QString tokenIn(const QVariantMap& platformData) {
    const QString token = cleanActivationToken(platformData.value(waylandToken).toString());
    return token.isEmpty() ? cleanActivationToken(platformData.value(x11Token).toString()) : token;
}

QVariantMap platformDataWith(const QString& token) {
    if (token.isEmpty())
        return {};
    return {{waylandToken, token}, {x11Token, token}};
}

QDBusMessage callFor(const QString& owner, const OpenRequest& request, const QString& token) {
    const char* const method = request.isEmpty() ? "Activate" : request.shows ? "ActivateAction" : "Open";
    QDBusMessage call =
        QDBusMessage::createMethodCall(owner, applicationObject, applicationInterface, QLatin1String(method));
    if (!request.isEmpty() && request.shows)
        call << QString(showItemsAction) << QVariantList{request.uris()};
    else if (!request.isEmpty())
        call << request.uris();
    return call << platformDataWith(token);
}

bool isTooMuch(const QStringList& uris) {
    qsizetype size = 0;
    for (const QString& uri : uris) {
        if (uri.size() > maximumTextSize)
            return true;
        size += uri.size();
    }
    return uris.size() > maximumPaths || size > maximumPathBytes;
}

} // namespace

ApplicationOnBus::ApplicationOnBus() = default;

ApplicationOnBus::~ApplicationOnBus() {
    if (m_bus)
        m_bus->connection().unregisterService(applicationName);
}

ApplicationOnBus::Outcome ApplicationOnBus::start() {
    if (m_bus && m_bus->isConnected())
        return Outcome::Primary;
    m_bus = std::make_unique<SessionBusConnection>();
    // A call may come right after the name, and is to find the object.
    if (!m_bus->isConnected() || !m_bus->connection().registerObject(
                                     applicationObject, this, QDBusConnection::ExportScriptableSlots)) {
        m_bus.reset();
        return Outcome::NoBus;
    }
    if (takeName())
        return Outcome::Primary;
    const QDBusMessage owner = m_bus->askBus(QStringLiteral("GetConnectionUnixUser"), applicationName);
    const bool isOwnUsers = SessionBusConnection::isOwnUser(owner);
    m_bus.reset();
    return isOwnUsers ? Outcome::AnotherRuns : Outcome::NoBus;
}

bool ApplicationOnBus::takeName() {
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply =
        m_bus->connection().interface()->registerService(applicationName,
                                                         QDBusConnectionInterface::DontQueueService,
                                                         QDBusConnectionInterface::DontAllowReplacement);
    return reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered;
}

bool ApplicationOnBus::forwardToRunning(const OpenRequest& request, const QString& token,
                                        std::chrono::milliseconds limit) {
    SessionBusConnection bus;
    if (!bus.isConnected())
        return false;
    const QString owner =
        bus.askBus(QStringLiteral("GetNameOwner"), applicationName).arguments().value(0).toString();
    if (!owner.startsWith(QLatin1Char(':')) || !bus.isOwnUsers(owner))
        return false;
    return bus.connection()
               .call(callFor(owner, request, token), QDBus::Block, static_cast<int>(limit.count()))
               .type() == QDBusMessage::ReplyMessage;
}

// Some launchers leave the bus before it can say whose they were. Showing the window does no harm.
bool ApplicationOnBus::refuses(bool isHarmless) {
    const QDBusMessage user = m_bus->askBus(QStringLiteral("GetConnectionUnixUser"), message().service());
    if (SessionBusConnection::isOwnUser(user) || (isHarmless && user.type() == QDBusMessage::ErrorMessage))
        return false;
    sendErrorReply(accessDenied, Texts::tr("Only the same user's programs may ask for this."));
    return true;
}

void ApplicationOnBus::Activate(const QVariantMap& platformData) {
    if (refuses(true))
        return;
    QMetaObject::invokeMethod(
        this, [this, token = tokenIn(platformData)] { emit activated(token); }, Qt::QueuedConnection);
}

void ApplicationOnBus::Open(const QStringList& uris, const QVariantMap& platformData) {
    if (refuses(false))
        return;
    if (uris.isEmpty())
        return Activate(platformData);
    take(uris, platformData, false);
}

void ApplicationOnBus::take(const QStringList& uris, const QVariantMap& platformData, bool shows) {
    if (isTooMuch(uris))
        return sendErrorReply(invalidArguments, Texts::tr("Too many items in one request."));
    OpenRequest request = OpenRequest::fromUris(uris);
    request.shows = shows;
    QMetaObject::invokeMethod(
        this, [this, request, token = tokenIn(platformData)] { emit opened(request, token); },
        Qt::QueuedConnection);
}

void ApplicationOnBus::ActivateAction(const QString& name, const QVariantList& parameters,
                                      const QVariantMap& platformData) {
    if (refuses(false))
        return;
    if (name != showItemsAction)
        return sendErrorReply(invalidArguments,
                              Texts::tr("There is no action “%1”.").arg(name.left(longestActionName)));
    const QStringList uris = parameters.size() == 1 ? parameters.front().toStringList() : QStringList();
    if (uris.isEmpty())
        return sendErrorReply(invalidArguments, Texts::tr("This action takes one list of URIs."));
    take(uris, platformData, true);
}

} // namespace veilkeep
