#include "platform/linux/PackageKitTransaction.h"

#include "platform/linux/BusLink.h"

#include <QDBusArgument>
#include <QStringList>

#include <utility>

namespace veilkeep {
namespace {

const QString interface = QStringLiteral("org.freedesktop.PackageKit.Transaction");
constexpr uint success = 1;
constexpr uint packageNotFound = 8; // which is an answer

} // namespace

PackageKitTransaction::PackageKitTransaction(BusLink& systemBus, QString service, QString object)
    : m_bus(systemBus), m_service(std::move(service)), m_object(std::move(object)) {
    const auto hook = [this](const char* signal, const char* slot) {
        m_bus.hook(m_service, m_object, interface, signal, this, slot);
    };
    hook("Package", SLOT(tellPackage(QDBusMessage)));
    hook("Packages", SLOT(tellPackages(QDBusMessage))); // of versions from 1.3 on
    hook("ErrorCode", SLOT(tellError(QDBusMessage)));
    hook("Finished", SLOT(tellFinished(QDBusMessage)));
}

PackageKitTransaction::~PackageKitTransaction() {
    if (!m_hasEnded && m_bus.isUp())
        m_bus.connection().send(call(QStringLiteral("Cancel")));
}

void PackageKitTransaction::ask(const QString& method, const QVariantList& arguments) {
    QDBusMessage hints = call(QStringLiteral("SetHints"));
    hints << QStringList{QStringLiteral("interactive=true"), QStringLiteral("background=false")};
    m_bus.connection().send(hints);
    QDBusMessage question = call(method);
    question.setArguments(arguments);
    m_bus.ask(question, *this, [this](const QDBusMessage& answer) {
        if (answer.type() == QDBusMessage::ErrorMessage)
            end(false, answer.errorMessage());
    });
}

QDBusMessage PackageKitTransaction::call(const QString& method) const {
    return QDBusMessage::createMethodCall(m_service, m_object, interface, method);
}

// "name;version;architecture;source".
void PackageKitTransaction::take(const QString& packageId) {
    const QStringList parts = packageId.split(u';');
    if (parts.size() >= 2)
        m_packages.push_back({parts[0], parts[1]});
}

void PackageKitTransaction::tellPackage(const QDBusMessage& signal) {
    take(signal.arguments().value(1).toString());
}

void PackageKitTransaction::tellPackages(const QDBusMessage& signal) {
    const QVariant list = signal.arguments().value(0);
    if (signal.signature() != QLatin1String("a(uss)"))
        return;
    const auto rows = list.value<QDBusArgument>();
    rows.beginArray();
    while (!rows.atEnd()) {
        uint info = 0;
        QString packageId, summary;
        rows.beginStructure();
        rows >> info >> packageId >> summary;
        rows.endStructure();
        take(packageId);
    }
    rows.endArray();
}

void PackageKitTransaction::tellError(const QDBusMessage& signal) {
    m_isNotFound = signal.arguments().value(0).toUInt() == packageNotFound;
    m_error = signal.arguments().value(1).toString();
}

void PackageKitTransaction::tellFinished(const QDBusMessage& signal) {
    end(m_isNotFound || signal.arguments().value(0).toUInt() == success, m_error);
}

void PackageKitTransaction::end(bool allWell, const QString& reason) {
    if (!std::exchange(m_hasEnded, true))
        emit ended(allWell, reason);
}

} // namespace veilkeep
