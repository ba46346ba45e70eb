#include "platform/linux/ActivationToken.h"

#include <QtGlobal>

#include <algorithm>

namespace veilkeep {
namespace {

constexpr qsizetype longestToken = 1024;
constexpr const char* waylandVariable = "XDG_ACTIVATION_TOKEN";
constexpr const char* x11Variable = "DESKTOP_STARTUP_ID";

} // namespace

QString inheritedActivationToken() {
    const QString token = cleanActivationToken(qEnvironmentVariable(waylandVariable));
    return token.isEmpty() ? cleanActivationToken(qEnvironmentVariable(x11Variable)) : token;
}

void dropInheritedActivationToken() {
    qunsetenv(waylandVariable);
    qunsetenv(x11Variable);
}

void useActivationToken(const QString& token) {
    const QString clean = cleanActivationToken(token);
    if (clean.isEmpty())
        qunsetenv(waylandVariable);
    else
        qputenv(waylandVariable, clean.toUtf8());
}

QString cleanActivationToken(const QString& token) {
    const bool isPlain = std::ranges::all_of(token, [](QChar character) { return character.isPrint(); });
    return isPlain && token.size() <= longestToken ? token : QString();
}

} // namespace veilkeep
