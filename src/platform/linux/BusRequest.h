#pragma once

#include "platform/Request.h"

#include <QByteArrayList>
#include <QLatin1String>
#include <QString>
#include <QVariantMap>

#include <string>
#include <vector>

// How requests look on the session bus; docs/bus.md describes it for other programs.
namespace veilkeep {

inline constexpr QLatin1String requestService("com.ostrel.Veilkeep.Requests");
inline constexpr QLatin1String requestObject("/com/ostrel/Veilkeep/Requests");
inline constexpr QLatin1String requestInterface("com.ostrel.Veilkeep.Requests1");
inline constexpr QLatin1String callerObject("/com/ostrel/Veilkeep/Caller");
inline constexpr QLatin1String callerInterface("com.ostrel.Veilkeep.Caller1");

inline constexpr QLatin1String accessDenied("org.freedesktop.DBus.Error.AccessDenied");
inline constexpr QLatin1String invalidArguments("org.freedesktop.DBus.Error.InvalidArgs");
inline constexpr QLatin1String limitsExceeded("org.freedesktop.DBus.Error.LimitsExceeded");
inline constexpr QLatin1String notSupported("org.freedesktop.DBus.Error.NotSupported");

inline constexpr int withoutLimit = 0x7fffffff; // the bus library's number for a call that never times out

// Both ends keep these, far below where the bus would close the connection.
inline constexpr qsizetype maximumPaths = 100'000;
inline constexpr qsizetype maximumPathBytes = 16 << 20; // all together
inline constexpr qsizetype maximumOptions = 64;
inline constexpr qsizetype maximumTextSize = 64 << 10; // of the command and of each option

void registerRequestTypes(); // before any of them is sent

// A row or the options, without what the bus cannot carry or this interface does not know: values are
// booleans, numbers, texts, bytes and lists of texts or bytes.
QVariantMap busValues(const QVariantMap& values); // to be sent
struct ReadValues {
    QVariantMap values;
    bool isComplete = true;
};
ReadValues readValues(const QVariantMap& received);

QByteArrayList busPaths(const std::vector<std::string>& paths);

// Why a request is not taken, as a sentence; empty where it is.
QString faultOfRequest(const QString& command, const QByteArrayList& paths, const QVariantMap& options);

} // namespace veilkeep
