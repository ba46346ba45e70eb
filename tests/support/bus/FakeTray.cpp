#include "tests/support/bus/FakeTray.h"

#include "core/environment/SessionBus.h"
#include "tests/support/bus/FakeTrayWatcher.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QDateTime>
#include <QEventLoop>
#include <QUuid>

#include <algorithm>

namespace veilkeep::test {
namespace {

constexpr const char* itemPath = "/StatusNotifierItem";
constexpr const char* itemInterface = "org.kde.StatusNotifierItem";
constexpr const char* menuInterface = "com.canonical.dbusmenu";

QString withoutMnemonic(const QString& label) {
    QString plain;
    for (qsizetype index = 0; index < label.size(); ++index) {
        if (label[index] == '_' && ++index == label.size())
            break;
        plain += label[index];
    }
    return plain;
}

// One of "(ia{sv}av)".
TrayEntry entryFrom(const QDBusArgument& argument) {
    TrayEntry entry;
    QVariantMap properties;
    QVariantList children;
    argument.beginStructure();
    argument >> entry.id >> properties >> children;
    argument.endStructure();
    entry.label = withoutMnemonic(properties.value("label").toString());
    entry.isEnabled = properties.value("enabled", true).toBool();
    entry.isVisible = properties.value("visible", true).toBool();
    entry.isSeparator = properties.value("type").toString() == "separator";
    for (const QVariant& child : children)
        entry.children.push_back(entryFrom(child.value<QDBusArgument>()));
    return entry;
}

} // namespace

FakeTray::FakeTray() {
    m_thread.start();
    start();
}

FakeTray::~FakeTray() {
    stop();
    m_thread.quit();
    m_thread.wait();
}

void FakeTray::start() {
    m_asking = std::make_unique<QDBusConnection>(QDBusConnection::connectToBus(
        QString::fromStdString(sessionBusAddress()), QUuid::createUuid().toString(QUuid::WithoutBraces)));
    m_watcher = std::make_unique<FakeTrayWatcher>();
    m_watcher->moveToThread(&m_thread);
}

void FakeTray::stop() {
    if (!m_watcher)
        return;
    QMetaObject::invokeMethod(
        m_watcher.get(), [this] { m_watcher.reset(); }, Qt::BlockingQueuedConnection);
    QDBusConnection::disconnectFromBus(m_asking->name());
}

void FakeTray::setHost(bool isThere) {
    m_watcher->setHost(isThere);
}

QStringList FakeTray::items() const {
    return m_watcher ? m_watcher->items() : QStringList();
}

QDBusMessage FakeTray::ask(const QString& path, const QString& interface, const QString& method,
                           const QVariantList& arguments) {
    if (items().isEmpty())
        return {};
    QDBusMessage call = QDBusMessage::createMethodCall(items().last(), path, interface, method);
    call.setArguments(arguments);
    const QDBusPendingCallWatcher answer(m_asking->asyncCall(call));
    QEventLoop loop;
    QObject::connect(&answer, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
    if (!answer.isFinished())
        loop.exec();
    return answer.reply();
}

QVariant FakeTray::property(const QString& name) {
    const QDBusMessage answer =
        ask(itemPath, "org.freedesktop.DBus.Properties", "Get", {QString(itemInterface), name});
    return answer.arguments().value(0).value<QDBusVariant>().variant();
}

void FakeTray::click() {
    ask(itemPath, itemInterface, "Activate", {0, 0});
}

QString FakeTray::menuPath() {
    return property("Menu").value<QDBusObjectPath>().path();
}

std::vector<TrayEntry> FakeTray::entriesOf(int parent) {
    const QString path = menuPath();
    if (path.isEmpty())
        return {};
    ask(path, menuInterface, "AboutToShow", {parent}); // fills menus that are made when they are wanted
    const QDBusMessage answer = ask(path, menuInterface, "GetLayout", {parent, -1, QStringList()});
    if (answer.arguments().size() != 2)
        return {};
    return entryFrom(answer.arguments().at(1).value<QDBusArgument>()).children;
}

std::vector<TrayEntry> FakeTray::menu() {
    std::vector<TrayEntry> entries = entriesOf(0);
    closeMenu();
    return entries;
}

bool FakeTray::choose(const QStringList& path) {
    int chosen = 0;
    for (const QString& label : path) {
        const std::vector<TrayEntry> entries = entriesOf(chosen);
        const auto found = std::ranges::find_if(entries, [&](const TrayEntry& entry) {
            return entry.label == label && entry.isEnabled && entry.isVisible;
        });
        if (found == entries.end()) {
            closeMenu();
            return false;
        }
        chosen = found->id;
    }
    tellMenu(chosen, "clicked");
    return true;
}

void FakeTray::closeMenu() {
    tellMenu(0, "closed");
}

void FakeTray::tellMenu(int entry, const QString& event) {
    ask(menuPath(), menuInterface, "Event",
        {entry, event, QVariant::fromValue(QDBusVariant(QString())),
         static_cast<uint>(QDateTime::currentSecsSinceEpoch())});
}

} // namespace veilkeep::test
