#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariantList>

#include <vector>

namespace veilkeep {

class BusLink;

// One question to PackageKit, whose answer comes as signals. Cancelled where it goes before that. Main
// thread.
class PackageKitTransaction : public QObject {
    Q_OBJECT

public:
    struct Package {
        QString name, version;
    };

    // Of the service with that unique name, at the object that it made for this.
    PackageKitTransaction(BusLink& systemBus, QString service, QString object);
    ~PackageKitTransaction() override;

    void ask(const QString& method, const QVariantList& arguments);

    const std::vector<Package>& packages() const { return m_packages; } // that it told of

signals:
    void ended(bool allWell, const QString& reason); // once; the reason is in the service's words

private slots:
    void tellPackage(const QDBusMessage& signal);
    void tellPackages(const QDBusMessage& signal);
    void tellError(const QDBusMessage& signal);
    void tellFinished(const QDBusMessage& signal);

private:
    QDBusMessage call(const QString& method) const;
    void take(const QString& packageId);
    void end(bool allWell, const QString& reason);

    BusLink& m_bus;
    QString m_service, m_object;
    std::vector<Package> m_packages;
    QString m_error;
    bool m_isNotFound = false;
    bool m_hasEnded = false;
};

} // namespace veilkeep
