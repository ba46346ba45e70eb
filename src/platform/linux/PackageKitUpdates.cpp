#include "platform/linux/PackageKitUpdates.h"

#include "core/log/Log.h"
#include "platform/linux/BusLink.h"

#include <QDBusObjectPath>

#include <algorithm>
#include <utility>

namespace veilkeep {
namespace {

using Kind = UpdateOutcome::Kind;

const QString serviceName = QStringLiteral("org.freedesktop.PackageKit");

// Filters are bits, numbered as PackageKit numbers its names of them.
constexpr qulonglong none = 1 << 1, installed = 1 << 2, notInstalled = 1 << 3, newest = 1 << 16;

bool isAbsence(const QString& error) {
    static const QStringList names = {QStringLiteral("org.freedesktop.DBus.Error.ServiceUnknown"),
                                      QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner"),
                                      QStringLiteral("org.freedesktop.DBus.Error.Disconnected")};
    return names.contains(error) || error.startsWith(QLatin1String("org.freedesktop.DBus.Error.Spawn."));
}

} // namespace

PackageKitUpdates::PackageKitUpdates(BusLink& systemBus, QString package)
    : m_bus(systemBus), m_package(std::move(package)) {
    connect(&m_bus, &BusLink::wentDown, this, [this] { tell(Kind::NoService); });
}

void PackageKitUpdates::check(WhenKnown whenKnown) {
    cancel();
    m_whenKnown = std::move(whenKnown);
    m_open = std::make_unique<QObject>();
    m_installed.clear();
    m_notRefreshed.clear();
    m_isRefreshed = false;
    if (!m_bus.isUp())
        return tell(Kind::NoService);
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    m_bus.connection().connect(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                               QStringLiteral("NameOwnerChanged"), {serviceName}, QStringLiteral("sss"), this,
                               SLOT(noticeOwner(QString, QString, QString)));
    ask(QStringLiteral("RefreshCache"), {false}, &PackageKitUpdates::refreshed);
}

void PackageKitUpdates::cancel() {
    m_whenKnown = nullptr;
    m_open.reset();
    m_transaction.reset();
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    m_bus.connection().disconnect(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                  QStringLiteral("NameOwnerChanged"), {serviceName}, QStringLiteral("sss"),
                                  this, SLOT(noticeOwner(QString, QString, QString)));
}

// One that came up for this question is no trouble, one that went is.
void PackageKitUpdates::noticeOwner(const QString& /*name*/, const QString& before,
                                    const QString& /*owner*/) {
    if (!before.isEmpty() && m_whenKnown)
        tell(Kind::Failed, {}, tr("The package service ended."));
}

// Each question needs an object of its own.
void PackageKitUpdates::ask(const QString& method, const QVariantList& arguments, Step next) {
    const QDBusMessage create =
        QDBusMessage::createMethodCall(serviceName, QStringLiteral("/org/freedesktop/PackageKit"),
                                       serviceName, QStringLiteral("CreateTransaction"));
    m_bus.ask(create, *m_open, [this, method, arguments, next](const QDBusMessage& answer) {
        const auto object = answer.arguments().value(0).value<QDBusObjectPath>();
        if (answer.type() != QDBusMessage::ReplyMessage || object.path().isEmpty())
            return refuse(answer);
        start(answer.service(), object.path(), method, arguments, next);
    });
}

void PackageKitUpdates::start(const QString& service, const QString& object, const QString& method,
                              const QVariantList& arguments, Step next) {
    m_transaction = std::make_unique<PackageKitTransaction>(m_bus, service, object);
    connect(
        m_transaction.get(), &PackageKitTransaction::ended, m_open.get(),
        [this, next](bool allWell, const QString& reason) { (this->*next)(allWell, reason); },
        Qt::QueuedConnection); // the next step takes its place
    m_transaction->ask(method, arguments);
}

void PackageKitUpdates::refuse(const QDBusMessage& answer) {
    logLine("PackageKit: " + answer.errorName().toStdString() + ": " + answer.errorMessage().toStdString());
    if (isAbsence(answer.errorName()))
        tell(Kind::NoService);
    else
        tell(Kind::Failed, {}, answer.errorMessage());
}

// Without network, or rights, what is known already may still hold the answer.
void PackageKitUpdates::refreshed(bool allWell, const QString& reason) {
    m_isRefreshed = allWell;
    m_notRefreshed = reason;
    ask(QStringLiteral("Resolve"), {installed, QStringList{m_package}}, &PackageKitUpdates::foundInstalled);
}

void PackageKitUpdates::foundInstalled(bool allWell, const QString& reason) {
    m_installed = versionTold();
    if (!allWell)
        tell(Kind::Failed, {}, reason);
    else if (m_installed.isEmpty())
        ask(QStringLiteral("Resolve"), {notInstalled | newest, QStringList{m_package}},
            &PackageKitUpdates::foundAvailable);
    else
        ask(QStringLiteral("GetUpdates"), {none}, &PackageKitUpdates::foundUpdates);
}

void PackageKitUpdates::foundUpdates(bool allWell, const QString& reason) {
    const QString version = versionTold();
    if (!version.isEmpty() && version != m_installed)
        tell(Kind::Newer, version);
    else if (!allWell || !m_isRefreshed)
        tell(Kind::Failed, {}, allWell ? m_notRefreshed : reason);
    else
        tell(Kind::UpToDate);
}

void PackageKitUpdates::foundAvailable(bool allWell, const QString& reason) {
    if (allWell)
        tell(Kind::NotPackaged, versionTold());
    else
        tell(Kind::Failed, {}, reason);
}

QString PackageKitUpdates::versionTold() const {
    const auto& packages = m_transaction->packages();
    const auto found = std::ranges::find(packages, m_package, &PackageKitTransaction::Package::name);
    return found == packages.end() ? QString() : found->version;
}

void PackageKitUpdates::tell(Kind kind, const QString& version, const QString& reason) {
    const WhenKnown whenKnown = std::move(m_whenKnown);
    const UpdateOutcome outcome{kind, version, m_installed, reason};
    cancel();
    if (whenKnown)
        whenKnown(outcome);
}

} // namespace veilkeep
