#pragma once

#include "tests/support/bus/BusService.h"

#include <QString>

#include <map>
#include <memory>
#include <vector>

namespace veilkeep::test {

// Plays PackageKit on the test's own system bus.
class FakePackageKit {
public:
    // What it says to one question, before it is finished.
    struct Said {
        std::vector<QString> packages = {}; // "name;version;architecture;source"
        QString error = {};                 // empty: all went well
        bool isNewer = false;               // tells the packages as versions from 1.3 on do
        bool neverEnds = false;
        uint code = 2; // of the error
    };
    std::map<QString, Said> answers; // to "RefreshCache", "GetUpdates", "Resolve installed", "Resolve"

    explicit FakePackageKit(std::map<QString, Said> said = {});

    void finish(const QString& object); // a question that never ended
    std::vector<QDBusMessage> calls(const QString& method) const { return m_service->calls(method); }

private:
    QDBusMessage answer(const QDBusMessage& call);
    void say(const QString& object, const Said& said);
    void send(const QString& object, const char* signal, const QVariantList& arguments);

    int m_objects = 0;
    std::unique_ptr<BusService> m_service;
};

} // namespace veilkeep::test
