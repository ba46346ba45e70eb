#pragma once

#include "format/PrintableName.h"

#include <QCoreApplication>
#include <QString>

#include <string_view>

namespace veilkeep {

// The application's own name, as texts show it.
inline QString applicationName() {
    return QStringLiteral("Veilkeep");
}

// A path or name as it is shown: harmless, and never acted on.
inline QString shownPath(std::string_view path) {
    return QString::fromStdString(printableName(path));
}

// The same with "~" for the home folder; empty: there is none.
inline QString shownPathFromHome(std::string_view path, std::string_view home) {
    const bool isBelow = !home.empty() && path.starts_with(home) &&
                         (path.size() == home.size() || path[home.size()] == '/');
    return isBelow ? QLatin1Char('~') + shownPath(path.substr(home.size())) : shownPath(path);
}

} // namespace veilkeep
