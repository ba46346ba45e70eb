// Plays the other end of requests: "owner" serves a handler that does what the command's name says; "hung"
// serves, and then never looks at the bus; "client COMMAND" makes a request and never answers a question.

#include "platform/linux/RequestClient.h"
#include "platform/linux/RequestService.h"
#include "tests/support/WaitUntil.h"

#include <QCoreApplication>
#include <QTimer>

#include <unistd.h>

#include <iostream>

namespace veilkeep::test {
namespace {

void tell(const std::string& line) {
    std::cout << line << std::endl;
}

class PeerHandler : public RequestHandler {
public:
    void handle(const Request& request, RequestCaller& caller, Done done) override {
        tell("begins " + request.command.toStdString());
        done(work(request, caller));
    }

private:
    RequestStatus work(const Request& request, RequestCaller& caller) {
        if (request.command == QLatin1String("echo"))
            return echo(request, caller);
        if (request.command == QLatin1String("ask")) {
            const std::size_t answer = caller.ask({"title", "message", {"Yes", "Perhaps", "No"}});
            tell("answered " + std::to_string(answer) + (caller.isCancelled() ? ", cancelled" : ""));
            return answer == 1 ? RequestStatus::AllWell : RequestStatus::Refused;
        }
        if (request.command == QLatin1String("ask and take back")) {
            QTimer::singleShot(0, &m_context, [&caller] { caller.cancelQuestion(); });
            const std::size_t first = caller.ask({"first", "", {"Yes", "No"}});
            const std::size_t second = caller.ask({"second", "", {"Yes", "No"}});
            tell(std::to_string(first) + " " + std::to_string(second));
            return RequestStatus::AllWell;
        }
        if (request.command == QLatin1String("wait")) {
            caller.message("waits");
            return waitUntil([&] { return caller.isCancelled(); }) ? RequestStatus::SomeFailed
                                                                   : RequestStatus::AllWell;
        }
        if (request.command == QLatin1String("die"))
            ::_exit(1);
        caller.message("unknown");
        return RequestStatus::WrongUsage;
    }

    static RequestStatus echo(const Request& request, RequestCaller& caller) {
        for (const std::string& path : request.paths)
            caller.itemDone(path, path + "'");
        caller.itemFailed("/failed\xfe", "why");
        caller.listed({request.options, {{"count", QVariant::fromValue(7UL)}}});
        caller.progress("stage", "part", 1, 2);
        return RequestStatus::SomeFailed;
    }

    QObject m_context;
};

class SilentCaller : public RequestCaller {
public:
    void itemDone(const std::string&, const std::string&) override {}
    void itemFailed(const std::string&, const QString&) override {}
    void message(const QString& text) override { tell(text.toStdString()); }
    void listed(const std::vector<QVariantMap>&) override {}
    void progress(const QString&, const QString&, std::size_t, std::size_t) override {}
    std::size_t ask(const Question&) override {
        tell("asked");
        ::pause();
        return 0;
    }
    std::optional<QString> askPassword(const QString&, int) override { return std::nullopt; }
    void cancelQuestion() override {}
    bool isCancelled() const override { return false; }
};

int run(QCoreApplication& application, const QStringList& arguments) {
    if (arguments.value(1) == QLatin1String("client")) {
        SilentCaller caller;
        const auto status = RequestClient().run({arguments.value(2), {}, {}}, caller);
        return status ? static_cast<int>(*status) : 100;
    }
    PeerHandler handler;
    RequestService service(handler);
    const Result<void> started = service.start();
    tell(started ? "serves" : started.error().operation);
    if (arguments.value(1) == QLatin1String("hung"))
        ::pause();
    return started ? application.exec() : 1;
}

} // namespace
} // namespace veilkeep::test

int main(int count, char** values) {
    QCoreApplication application(count, values);
    return veilkeep::test::run(application, QCoreApplication::arguments());
}
