#include "format/SystemVersion.h"

#include "core/filesystem/ReadWholeFile.h"

#include <sys/utsname.h>

#include <QStringList>

#include <cmath>
#include <string>

namespace veilkeep {
namespace {

QString unquoted(QString value) {
    const bool isQuoted = value.size() >= 2 && value.front() == value.back() &&
                          (value.front() == QLatin1Char('"') || value.front() == QLatin1Char('\''));
    return isQuoted ? value.mid(1, value.size() - 2) : value;
}

QString valueOf(const QString& key, const QStringList& lines) {
    for (const QString& line : lines) {
        if (line.startsWith(key + QLatin1Char('=')))
            return unquoted(line.mid(key.size() + 1).trimmed());
    }
    return {};
}

} // namespace

bool isOnTigerOrBetter(double version) {
    return std::floor(version) > 743;
}

bool isTiger(double version) {
    return std::floor(version) == 824;
}

bool isOnLeopardOrBetter(double version) {
    return std::floor(version) > 824;
}

bool isSnowLeopardOrBetter(double version) {
    return std::floor(version) > 949;
}

QString shortVersion(const QString& versionText) {
    const QString prefix = QStringLiteral("Version ");
    const QString version = versionText.startsWith(prefix) ? versionText.mid(prefix.size()) : versionText;
    return version.left(version.indexOf(QLatin1Char(' ')));
}

QString versionInOsRelease(std::string_view content) {
    const QStringList lines =
        QString::fromUtf8(content.data(), qsizetype(content.size())).split(QLatin1Char('\n'));
    const QString version = valueOf(QStringLiteral("VERSION"), lines);
    return version.isEmpty() ? valueOf(QStringLiteral("VERSION_ID"), lines) : version;
}

QString osVersion() {
    for (const char* place : {"/etc/os-release", "/usr/lib/os-release"}) {
        const auto content = readWholeFile(place, 64 * 1024);
        const QString version = content ? versionInOsRelease(*content) : QString();
        if (!version.isEmpty())
            return shortVersion(version);
    }
    utsname system = {};
    return ::uname(&system) == 0 ? shortVersion(QString::fromLocal8Bit(system.release)) : QString();
}

} // namespace veilkeep
