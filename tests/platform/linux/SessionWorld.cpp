#include "tests/platform/linux/SessionWorld.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>

#include <gtest/gtest.h>

#include <signal.h>

#include <functional>
#include <sstream>

namespace veilkeep::test {
namespace {

struct Saver {
    const char* word;
    const char* name;
    const char* path;
    const char* interface;
};

constexpr Saver savers[] = {
    {"gnome", "org.gnome.ScreenSaver", "/org/gnome/ScreenSaver", "org.gnome.ScreenSaver"},
    {"shell", "org.gnome.Shell.ScreenShield", "/org/gnome/ScreenSaver", "org.gnome.ScreenSaver"},
    {"free", "org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver", "org.freedesktop.ScreenSaver"},
    {"free2", "org.freedesktop.ScreenSaver", "/ScreenSaver", "org.freedesktop.ScreenSaver"},
    {"kde", "org.kde.screensaver", "/ScreenSaver", "org.freedesktop.ScreenSaver"},
    {"cinnamon", "org.cinnamon.ScreenSaver", "/org/cinnamon/ScreenSaver", "org.cinnamon.ScreenSaver"},
    {"mate", "org.mate.ScreenSaver", "/org/mate/ScreenSaver", "org.mate.ScreenSaver"},
    {"xfce", "org.xfce.ScreenSaver", "/org/xfce/ScreenSaver", "org.xfce.ScreenSaver"},
    {"stranger", "org.example.Other", "/org/mate/ScreenSaver", "org.mate.ScreenSaver"},
};

const Saver& saverCalled(const std::string& word) {
    for (const Saver& saver : savers)
        if (word == saver.word)
            return saver;
    throw std::runtime_error("no such word: " + word);
}

QDBusConnection connectedTo(const char* addressVariable) {
    return QDBusConnection::connectToBus(qEnvironmentVariable(addressVariable), addressVariable);
}

// What was sent to a bus connection before it answers a call, be it with an error, has come to it by then.
void callAll(QDBusConnection bus) {
    for (const QString& connection : bus.interface()->registeredServiceNames().value())
        if (connection.startsWith(':') && connection != bus.baseService())
            bus.call(QDBusMessage::createMethodCall(connection, "/", "org.example.Settle", "Settle"));
    QCoreApplication::processEvents();
}

constexpr const char* addressVariables[] = {"DBUS_SYSTEM_BUS_ADDRESS", "DBUS_SESSION_BUS_ADDRESS"};

} // namespace

SessionWorld::SessionWorld() {
    PrivateBus::useItsAddress(PrivateBus::Place::System);
    PrivateBus::useItsAddress(PrivateBus::Place::Session);
    ::unsetenv("XDG_SESSION_ID");
}

SessionWorld::~SessionWorld() {
    events.reset();
    stopBuses();
}

std::string SessionWorld::whyMissing() const {
    if (!m_systemBus->whyMissing().empty())
        return m_systemBus->whyMissing();
    return logind ? logind->whyMissing() : std::string();
}

void SessionWorld::startBuses() {
    m_systemBus = std::make_unique<PrivateBus>(m_tree, PrivateBus::Place::System);
    m_sessionBus = std::make_unique<PrivateBus>(m_tree, PrivateBus::Place::Session);
}

void SessionWorld::stopBuses() {
    for (const char* const variable : addressVariables)
        QDBusConnection::disconnectFromBus(variable);
    m_savers.clear();
    stopLogind();
    m_systemBus.reset();
    m_sessionBus.reset();
}

void SessionWorld::startLogind(const char* parameters, const std::function<void(FakeLogind&)>& set) {
    logind = std::make_unique<FakeLogind>(parameters);
    if (!whyMissing().empty())
        return;
    if (set)
        set(*logind);
    logind->showSession();
}

void SessionWorld::calmDown() {
    events.reset();
    m_savers.clear();
    logind->setPreparing("Sleep", false);
    logind->setPreparing("Shutdown", false);
    logind->set("LockedHint", false);
    logind->set("Active", true);
}

void SessionWorld::listen() {
    told.clear();
    events = std::make_unique<LinuxSessionEvents>(std::chrono::milliseconds(20));
    QObject::connect(events.get(), &SessionEvents::absenceChanged, [this](Absence kind, bool isAway) {
        tell(std::string(1, "SLA"[static_cast<int>(kind)]) + (isAway ? "+" : "-"));
    });
    QObject::connect(events.get(), &SessionEvents::endRequested, [this](Ending ending) {
        constexpr const char* names[] = {"signal", "logout", "shutdown"};
        tell(names[static_cast<int>(ending)]);
    });
    events->start();
}

void SessionWorld::settle() {
    constexpr int longestChain = 9; // of questions, each of which follows from an answer
    for (int question = 0; question < longestChain; ++question)
        for (const char* const variable : addressVariables)
            callAll(connectedTo(variable));
}

BusService& SessionWorld::saver(const std::string& name) {
    auto& service = m_savers[name];
    if (!service) {
        service = std::make_unique<BusService>(
            QString::fromStdString(name),
            [](const QDBusMessage& call) { return call.createErrorReply(QDBusError::UnknownMethod, {}); },
            QDBusConnection::SessionBus);
        settle();
    }
    return *service;
}

void SessionWorld::say(const std::string& word) {
    const bool begins = word.back() == '+';
    const std::string what = word.substr(0, word.find_first_of("+-!"));
    if (what == "sleep")
        logind->announce("Sleep", begins);
    else if (what == "shutdown")
        logind->announce("Shutdown", begins);
    else if (what == "hint")
        logind->set("LockedHint", begins);
    else if (what == "active")
        logind->set("Active", begins);
    else if (what == "Lock" || what == "Unlock")
        logind->emitSignal(what.c_str());
    else if (what == "TERM" || what == "HUP" || what == "INT")
        ::raise(what == "TERM" ? SIGTERM : what == "HUP" ? SIGHUP : SIGINT);
    else if (what == "release")
        events->release();
    else if (word.back() == '!')
        m_savers.erase(saverCalled(what).name);
    else if (const Saver& said = saverCalled(what); word.back() != '+' && word.back() != '-')
        saver(said.name);
    else
        saver(said.name).connection().send(
            QDBusMessage::createSignal(said.path, said.interface, "ActiveChanged") << begins);
    settle();
}

void SessionWorld::sayAll(const std::string& words) {
    std::istringstream text(words);
    for (std::string word; text >> word;)
        say(word);
}

} // namespace veilkeep::test
