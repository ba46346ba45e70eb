#pragma once

#include "format/ErrorText.h"
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

// "/disk/list: No space left on device".
inline QString errorWithPath(const Error& error) {
    return QStringLiteral("%1: %2").arg(shownPath(error.path), errorReason(error));
}

} // namespace veilkeep
