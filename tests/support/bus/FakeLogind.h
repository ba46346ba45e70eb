#pragma once

#include "tests/support/BackgroundProgram.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace veilkeep::test {

inline const QString logindSessions = QStringLiteral("/org/freedesktop/login1/session/");

// logind as python3-dbusmock plays it, on the test's own system bus, with the user's session "c2" and the
// session "m1" of his service manager, without a seat.
class FakeLogind {
public:
    explicit FakeLogind(const char* parameters); // of dbusmock's, in JSON
    ~FakeLogind();

    // Why there is none, empty where there is.
    const std::string& whyMissing() const { return m_whyMissing; }
    pid_t process() const { return m_program.process(); }

    void showSession(); // from here on it is found

    // The name is what stands behind "Prepare" and "PreparingFor": "Sleep" or "Shutdown".
    void announce(const char* name, bool begins);
    void setPreparing(const char* name, bool isPreparing); // without the signal
    void set(const char* property, const QVariant& value, const QString& session = logindSessions + "c2");
    void emitSignal(const char* signal, const QString& session = logindSessions + "c2");
    void emitManagerSignal(const char* signal, const QString& signature, const QVariantList& arguments);
    void answer(const char* method, const char* signatures, const QString& code); // "u o", and Python
    void setDisplay(const QString& session);                                      // the user's main session

    QStringList inhibitors(); // what is held up, in order

private:
    QDBusMessage call(const QString& path, const char* interface, const char* method,
                      const QVariantList& arguments);
    void setPair(const QString& path, const QString& interface, const char* property, const QString& name,
                 const QString& object);
    void mock(const QString& path, const char* method, const QVariantList& arguments);

    BackgroundProgram m_program;
    QDBusConnection m_connection;
    std::string m_whyMissing;
};

} // namespace veilkeep::test
