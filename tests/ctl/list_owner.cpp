// Owns the list and works on requests from the session bus, as the application does without its windows.

#include "core/storage/ListOwnership.h"
#include "platform/linux/BusRequest.h"
#include "platform/linux/RequestService.h"
#include "tests/support/RunProgram.h"
#include "wiring/OwnList.h"

#include <QCoreApplication>

#include <iostream>

namespace veilkeep::test {
namespace {

class Handler : public RequestHandler {
public:
    void handle(const Request& request, RequestCaller& caller, Done done) override {
        done(m_list.run(request, caller, true));
    }

private:
    UserDefaults m_defaults;
    OwnList m_list{m_defaults, bundledProgram("cloakWorker"), OwnPlaces::current()};
};

} // namespace
} // namespace veilkeep::test

int main(int count, char** arguments) {
    using namespace veilkeep;
    const QCoreApplication application(count, arguments);
    SessionBusConnection bus; // until the end: "watch" takes the list back after it
    const QDBusMessage yield =
        QDBusMessage::createMethodCall(requestService, requestObject, requestInterface, "Yield");
    bus.connection().call(yield, QDBus::Block, withoutLimit); // an error: there is nobody to yield
    const auto ownership =
        ListOwnership::take(OwnPlaces::current().dataDirectory, std::chrono::milliseconds(0));
    test::Handler handler;
    RequestService service(handler);
    const bool serves = ownership && service.start();
    std::cout << (serves ? "serves" : "fails") << std::endl;
    return serves ? QCoreApplication::exec() : 1;
}
