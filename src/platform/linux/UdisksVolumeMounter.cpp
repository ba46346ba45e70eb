#include "platform/linux/UdisksVolumeMounter.h"

#include "core/log/Log.h"
#include "platform/linux/SystemBus.h"

#include <QByteArrayList>
#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <optional>
#include <utility>

namespace veilkeep {
namespace {

constexpr std::chrono::milliseconds limitWithoutQuestion = std::chrono::minutes(2); // a journal to replay
const QString fileSystemInterface = QStringLiteral("org.freedesktop.UDisks2.Filesystem");

bool isAnswer(const QDBusMessage& reply) {
    return reply.type() == QDBusMessage::ReplyMessage;
}

int errnoFrom(const QString& errorName) {
    constexpr std::pair<QLatin1String, int> rows[] = {
        {QLatin1String("org.freedesktop.UDisks2.Error.NotAuthorizedDismissed"), ECANCELED},
        {QLatin1String("org.freedesktop.UDisks2.Error.NotAuthorized"), EACCES}, // "…CanObtain" too
        {QLatin1String("org.freedesktop.UDisks2.Error.DeviceBusy"), EBUSY},
        {QLatin1String("org.freedesktop.UDisks2.Error.TimedOut"), ETIMEDOUT},
        {QLatin1String("org.freedesktop.UDisks2."), EIO},
    };
    for (const auto& [beginning, number] : rows)
        if (errorName.startsWith(beginning))
            return number;
    return ENOTCONN; // the bus itself, or nobody behind it
}

Error errorFrom(const QDBusMessage& reply, const QString& step) {
    logLine("udisks: " + reply.errorName().toStdString() + ": " + reply.errorMessage().toStdString());
    return Error::system(step.toStdString(), {}, errnoFrom(reply.errorName()));
}

} // namespace

UdisksVolumeMounter::UdisksVolumeMounter(Tick tick) : m_tick(std::move(tick)) {}

// Several devices carry the same UUID where one is a copy or the volume spans them.
Result<void> UdisksVolumeMounter::mount(const std::string& uuid, Asking asking) {
    if (uuid.empty()) // what every device without a file system has
        return Error{ErrorCode::InvalidArgument, "ResolveDevice", {}, 0};
    const QVariantMap wanted = {{QStringLiteral("uuid"), QString::fromStdString(uuid)}};
    const QString method = QStringLiteral("ResolveDevice");
    const QDBusMessage reply = call(QStringLiteral("/org/freedesktop/UDisks2/Manager"),
                                    QStringLiteral("org.freedesktop.UDisks2.Manager"), method,
                                    {wanted, QVariantMap()}, Asking::Never);
    if (!isAnswer(reply))
        return errorFrom(reply, method);
    QStringList devices;
    for (const QDBusObjectPath& device : qdbus_cast<QList<QDBusObjectPath>>(reply.arguments().value(0)))
        devices.append(device.path());
    if (std::ranges::any_of(devices, [this](const QString& device) { return isMounted(device); }))
        return {};
    Result<void> done = Error::system(method.toStdString(), {}, ENODEV);
    for (const QString& device : devices) {
        done = mountDevice(device, asking);
        if (done || done.error().systemError == ECANCELED)
            break;
    }
    return done;
}

Result<void> UdisksVolumeMounter::mountDevice(const QString& device, Asking asking) {
    QVariantMap options;
    if (asking == Asking::Never)
        options.insert(QStringLiteral("auth.no_user_interaction"), true);
    const QString method = QStringLiteral("Mount");
    const QDBusMessage reply = call(device, fileSystemInterface, method, {options}, asking);
    if (isAnswer(reply) || reply.errorName() == QLatin1String("org.freedesktop.UDisks2.Error.AlreadyMounted"))
        return {};
    return errorFrom(reply, method);
}

bool UdisksVolumeMounter::isMounted(const QString& device) {
    const QDBusMessage reply =
        call(device, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
             {fileSystemInterface, QStringLiteral("MountPoints")}, Asking::Never);
    const auto value = reply.arguments().value(0).value<QDBusVariant>().variant();
    return isAnswer(reply) && !qdbus_cast<QByteArrayList>(value).isEmpty();
}

QDBusMessage UdisksVolumeMounter::call(const QString& object, const QString& interface, const QString& method,
                                       const QVariantList& arguments, Asking asking) {
    QDBusMessage message =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.UDisks2"), object, interface, method);
    message.setArguments(arguments);
    const bool mayAsk = asking == Asking::Allowed;
    return SystemBus().call(message, mayAsk ? std::nullopt : std::optional(limitWithoutQuestion), m_tick);
}

} // namespace veilkeep
