#include "tests/app/process/ProcessWorld.h"
#include "core/storage/DefaultsKeys.h"

#include "core/storage/UserDefaults.h"
#include "platform/linux/SessionBusConnection.h"
#include "prefs/PasswordManager.h"

#include <QDBusMessage>

#include <utility>

namespace veilkeep::test {

void ProcessWorld::SetUp() {
    if (!m_bus->whyMissing().empty())
        GTEST_SKIP() << m_bus->whyMissing();
    UserDefaults defaults;
    defaults.set("ToldOfMissingMenuIcon", true);
    EXPECT_TRUE(defaults.synchronize());
    setOffersToInstall(false);
}

void ProcessWorld::start(const std::vector<std::string>& arguments) {
    std::vector<std::string> all{bundledProgram("Veilkeep")};
    all.insert(all.end(), arguments.begin(), arguments.end());
    m_application = std::make_unique<BackgroundProgram>(all);
}

std::optional<Screen::Window> ProcessWorld::startToWindow(const std::vector<std::string>& arguments) {
    start(arguments);
    return window();
}

ProgramRun ProcessWorld::run(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), bundledProgram("Veilkeep"));
    return runProgram(arguments, {0, m_tree.root(), {}});
}

ProgramRun ProcessWorld::ctl(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), bundledProgram("veilkeepctl"));
    return runProgram(arguments, {0, processScratch().root(), {}});
}

std::string ProcessWorld::listed() {
    return ctl({"list"}).output;
}

bool ProcessWorld::becomesListed(const std::string& text) {
    return waitUntil([&] { return listed().find(text) != std::string::npos; });
}

bool ProcessWorld::isLogged(const std::string& text) {
    const std::string log = processScratch().path("home/.local/state/Veilkeep/Veilkeep.log");
    return waitUntil([&] { return exists(log) && readFile(log).find(text) != std::string::npos; });
}

void ProcessWorld::setPassword() {
    UserDefaults defaults;
    defaults.set(defaultsKey::passwordEnabled, true);
    EXPECT_TRUE(PasswordManager(defaults).setPassword(password));
}

void ProcessWorld::setOffersToInstall(bool offers) {
    UserDefaults defaults;
    defaults.set(defaultsKey::noOfferToInstall, !offers);
    EXPECT_TRUE(defaults.synchronize());
}

QString ProcessWorld::call(const QString& method, const QVariantList& arguments) {
    SessionBusConnection bus;
    QDBusMessage message = QDBusMessage::createMethodCall("com.ostrel.Veilkeep", "/com/ostrel/Veilkeep",
                                                          "org.freedesktop.Application", method);
    message.setArguments(arguments);
    return bus.connection().call(message).errorName();
}

} // namespace veilkeep::test
