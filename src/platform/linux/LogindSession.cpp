#include "platform/linux/LogindSession.h"

#include "core/log/Log.h"
#include "platform/linux/LogindCalls.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <unistd.h>

#include <utility>

namespace veilkeep {
namespace {

struct NamedObject { // (so): a name and where it is
    QString name;
    QString path;
};

NamedObject namedObject(const QVariant& value) {
    NamedObject object;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(so)"))
        return object;
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> object.name >> path;
    argument.endStructure();
    object.path = path.path();
    return object;
}

QDBusMessage allPropertiesOf(const QString& logind, const QString& path) {
    QDBusMessage call = QDBusMessage::createMethodCall(logind, path, busProperties, QStringLiteral("GetAll"));
    call << QString(logindSession);
    return call;
}

QVariantMap mapOf(const QVariant& value) {
    return qdbus_cast<QVariantMap>(value);
}

} // namespace

void LogindSession::talkTo(const QString& logind) {
    m_logind = logind;
    m_asker.reset();
    m_path.clear();
    if (logind.isEmpty())
        return;
    m_bus.hook(logind, logindObject, logindManager, "SessionNew", this, SLOT(sessionCame(QDBusMessage)));
    m_bus.hook(logind, logindObject, logindManager, "SessionRemoved", this, SLOT(sessionWent(QDBusMessage)));
    find();
}

// "auto" is the caller's session, else the one that shows the user's desktop. The variable comes last: it may
// name the session of the user's service manager.
void LogindSession::find() {
    m_asker = std::make_unique<QObject>();
    m_path.clear();
    m_secondBest.clear();
    m_ways.clear();
    const auto sessionCalled = [this](const QString& id) {
        QDBusMessage call = logindManagerCall(m_logind, QStringLiteral("GetSession"));
        askForPath(call << id);
    };
    if (const QString id = qEnvironmentVariable("XDG_SESSION_ID"); !id.isEmpty())
        m_ways.emplace_back([sessionCalled, id] { sessionCalled(id); });
    m_ways.emplace_back([this] {
        QDBusMessage call = logindManagerCall(m_logind, QStringLiteral("GetUser"));
        ask(call << static_cast<uint>(::getuid()), [this](const QDBusMessage& answer) {
            const QString user = answer.arguments().value(0).value<QDBusObjectPath>().path();
            if (user.isEmpty())
                tryNextWay();
            else
                askForPath(propertyCall(m_logind, user, logindUser, QStringLiteral("Display")));
        });
    });
    m_ways.emplace_back([sessionCalled] { sessionCalled(QStringLiteral("auto")); });
    tryNextWay();
}

void LogindSession::tryNextWay() {
    if (!m_ways.empty()) {
        const auto way = std::move(m_ways.back());
        m_ways.pop_back();
        way();
    } else if (!m_secondBest.isEmpty()) {
        adopt(m_secondBest);
    } else {
        if (!std::exchange(m_isMissed, true))
            logLine("logind knows no session of this user's: locking is not told by it.");
        emit searched({});
    }
}

void LogindSession::askForPath(const QDBusMessage& call) {
    ask(call, [this](const QDBusMessage& answer) {
        const QVariant found = answer.arguments().value(0);
        const QString path = found.typeId() == qMetaTypeId<QDBusObjectPath>()
                                 ? found.value<QDBusObjectPath>().path()
                                 : namedObject(found.value<QDBusVariant>().variant()).path;
        if (path.size() > 1)
            consider(path);
        else
            tryNextWay();
    });
}

void LogindSession::consider(const QString& path) {
    ask(allPropertiesOf(m_logind, path), [this, path](const QDBusMessage& answer) {
        const QVariantMap properties = mapOf(answer.arguments().value(0));
        const bool isUsers = properties.value(QStringLiteral("Class")).toString() == QLatin1String("user");
        if (isUsers && !namedObject(properties.value(QStringLiteral("Seat"))).name.isEmpty()) {
            adopt(path);
            return;
        }
        if (isUsers && m_secondBest.isEmpty())
            m_secondBest = path;
        tryNextWay();
    });
}

// The properties are read once more: those that were seen before the hooks may be old by now.
void LogindSession::adopt(const QString& path) {
    m_path = path;
    m_bus.hook(m_logind, path, busProperties, "PropertiesChanged", this,
               SLOT(propertiesChanged(QDBusMessage)));
    m_bus.hook(m_logind, path, logindSession, "Lock", this, SLOT(lock(QDBusMessage)));
    m_bus.hook(m_logind, path, logindSession, "Unlock", this, SLOT(unlock(QDBusMessage)));
    readProperties();
    emit searched(path);
}

void LogindSession::readProperties() {
    ask(allPropertiesOf(m_logind, m_path),
        [this](const QDBusMessage& answer) { apply(mapOf(answer.arguments().value(0)), false); });
}

void LogindSession::apply(const QVariantMap& properties, bool isChange) {
    set(m_active, properties.value(QStringLiteral("Active")), true, isChange, &LogindSession::activeChanged);
    set(m_lockedHint, properties.value(QStringLiteral("LockedHint")), false, isChange,
        &LogindSession::lockedHintChanged);
}

void LogindSession::set(std::optional<bool>& known, const QVariant& value, bool meansUser, bool isChange,
                        void (LogindSession::*changed)(bool)) {
    if (value.typeId() != QMetaType::Bool || known == value.toBool())
        return;
    const bool wasKnown = std::exchange(known, value.toBool()).has_value();
    if (isChange && wasKnown && *known == meansUser)
        emit userNoticed();
    emit(this->*changed)(*known);
}

void LogindSession::sessionCame(const QDBusMessage& /*signal*/) {
    if (m_path.isEmpty() || m_path == m_secondBest)
        find();
}

// Who has left the session is not there.
void LogindSession::sessionWent(const QDBusMessage& signal) {
    const QString path = signal.arguments().value(1).value<QDBusObjectPath>().path();
    if (m_path.isEmpty() || path != m_path)
        return;
    set(m_active, false, true, true, &LogindSession::activeChanged);
    find();
}

void LogindSession::propertiesChanged(const QDBusMessage& signal) {
    const QVariantList arguments = signal.arguments();
    if (signal.path() != m_path || arguments.value(0).toString() != logindSession)
        return;
    apply(mapOf(arguments.value(1)), true);
    for (const QString& name : arguments.value(2).toStringList())
        if (name == QLatin1String("Active") || name == QLatin1String("LockedHint"))
            return readProperties();
}

void LogindSession::lock(const QDBusMessage& signal) {
    if (signal.path() == m_path)
        emit lockAsked();
}

void LogindSession::unlock(const QDBusMessage& signal) {
    if (signal.path() == m_path)
        emit userNoticed();
}

void LogindSession::ask(const QDBusMessage& call, Answered answered) {
    m_bus.ask(call, *m_asker, std::move(answered));
}

} // namespace veilkeep
