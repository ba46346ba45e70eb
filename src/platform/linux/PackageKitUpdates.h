#pragma once

#include "platform/SoftwareUpdates.h"
#include "platform/linux/PackageKitTransaction.h"

#include <QDBusMessage>
#include <QObject>

#include <memory>

namespace veilkeep {

class BusLink;

// Asks PackageKit, on the system bus, for the package of this program: has the package sources looked at anew
// and compares what they offer with what is installed. Owned by the program's wiring; main thread.
class PackageKitUpdates : public QObject, public SoftwareUpdates {
    Q_OBJECT

public:
    explicit PackageKitUpdates(BusLink& systemBus, QString package = QStringLiteral("veilkeep"));

    void check(WhenKnown whenKnown) override;
    void cancel() override;

private slots:
    void noticeOwner(const QString& name, const QString& before, const QString& owner);

private:
    using Step = void (PackageKitUpdates::*)(bool allWell, const QString& reason);

    void ask(const QString& method, const QVariantList& arguments, Step next);
    void start(const QString& service, const QString& object, const QString& method,
               const QVariantList& arguments, Step next);
    void refuse(const QDBusMessage& answer);
    void refreshed(bool allWell, const QString& reason);
    void foundInstalled(bool allWell, const QString& reason);
    void foundUpdates(bool allWell, const QString& reason);
    void foundAvailable(bool allWell, const QString& reason);
    QString versionTold() const; // of the package, null where it was not told of
    void tell(UpdateOutcome::Kind kind, const QString& version = {}, const QString& reason = {});

    BusLink& m_bus;
    const QString m_package;
    WhenKnown m_whenKnown; // while a question is open
    std::unique_ptr<QObject> m_open;
    std::unique_ptr<PackageKitTransaction> m_transaction;
    QString m_installed;
    QString m_notRefreshed; // why
    bool m_isRefreshed = false;
};

} // namespace veilkeep
