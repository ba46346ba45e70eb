// A second process of the desktop application. "serve" takes its name on the session bus and prints a line
// for each thing it is asked for; "forward TOKEN [URI…]" hands that on; "hang" takes the name and says no
// more.

#include "platform/linux/ApplicationOnBus.h"

#include <QCoreApplication>

#include <unistd.h>

#include <cstdio>

namespace {

using namespace veilkeep;

void print(const QString& line) {
    std::printf("%s\n", line.toUtf8().constData());
    std::fflush(stdout);
}

const char* nameOf(ApplicationOnBus::Outcome outcome) {
    constexpr const char* names[] = {"primary", "another", "no bus"};
    return names[static_cast<int>(outcome)];
}

} // namespace

int main(int count, char** arguments) {
    QCoreApplication application(count, arguments);
    const QStringList given = QCoreApplication::arguments().mid(1);
    if (given.value(0) == "forward")
        return ApplicationOnBus::forwardToRunning(OpenRequest::fromUris(given.mid(2)), given.value(1)) ? 0
                                                                                                       : 1;
    ApplicationOnBus bus;
    QObject::connect(&bus, &ApplicationOnBus::activated,
                     [](const QString& token) { print("show " + token); });
    QObject::connect(&bus, &ApplicationOnBus::opened, [](const OpenRequest& request, const QString& token) {
        print(QString("open %1 %2 %3").arg(request.paths.size()).arg(request.links.size()).arg(token));
        for (const std::string& path : request.paths)
            print(QString::fromLatin1(QByteArray::fromStdString(path).toHex()));
        for (const QString& link : request.links)
            print(link);
    });
    const ApplicationOnBus::Outcome outcome = bus.start();
    print(nameOf(outcome));
    if (outcome != ApplicationOnBus::Outcome::Primary)
        return 1;
    return given.value(0) == "hang" ? ::pause() : QCoreApplication::exec();
}
