#include "tests/support/bus/FakePackageKit.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>

#include <utility>

namespace veilkeep::test {
namespace {

const QString name = QStringLiteral("org.freedesktop.PackageKit");

struct ToldPackage {
    uint info = 0;
    QString id, summary;
};

} // namespace
} // namespace veilkeep::test

Q_DECLARE_METATYPE(veilkeep::test::ToldPackage)

namespace veilkeep::test {
namespace {

QDBusArgument& operator<<(QDBusArgument& argument, const ToldPackage& package) {
    argument.beginStructure();
    argument << package.info << package.id << package.summary;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ToldPackage& package) {
    argument.beginStructure();
    argument >> package.info >> package.id >> package.summary;
    argument.endStructure();
    return argument;
}

} // namespace

FakePackageKit::FakePackageKit(std::map<QString, Said> said) : answers(std::move(said)) {
    qDBusRegisterMetaType<ToldPackage>();
    qDBusRegisterMetaType<QList<ToldPackage>>();
    m_service = std::make_unique<BusService>(name, [this](const QDBusMessage& call) { return answer(call); });
}

QDBusMessage FakePackageKit::answer(const QDBusMessage& call) {
    const QString method = call.member();
    if (method == QLatin1String("CreateTransaction"))
        return call.createReply(
            QVariant::fromValue(QDBusObjectPath(QStringLiteral("/%1_t").arg(++m_objects))));
    constexpr qulonglong installed = 4;
    const bool isInstalled = method == QLatin1String("Resolve") && call.arguments()[0] == installed;
    const auto found = answers.find(isInstalled ? QStringLiteral("Resolve installed") : method);
    m_service->connection().send(call.createReply());
    if (found != answers.end())
        say(call.path(), found->second);
    return {};
}

void FakePackageKit::finish(const QString& object) {
    say(object, {});
}

void FakePackageKit::say(const QString& object, const Said& said) {
    constexpr uint ok = 1, failed = 2;
    QList<ToldPackage> together;
    for (const QString& id : said.packages)
        if (said.isNewer)
            together.append({1, id, {}});
        else
            send(object, "Package", {1U, id, QString()});
    if (said.isNewer)
        send(object, "Packages", {QVariant::fromValue(together)});
    if (!said.error.isEmpty())
        send(object, "ErrorCode", {said.code, said.error});
    if (!said.neverEnds)
        send(object, "Finished", {said.error.isEmpty() ? ok : failed, 100U});
}

void FakePackageKit::send(const QString& object, const char* signal, const QVariantList& arguments) {
    QDBusMessage message =
        QDBusMessage::createSignal(object, name + QStringLiteral(".Transaction"), QLatin1String(signal));
    message.setArguments(arguments);
    m_service->connection().send(message);
}

} // namespace veilkeep::test
