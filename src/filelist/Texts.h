#pragma once

#include "format/ErrorText.h"
#include "format/PrintableName.h"

#include <QCoreApplication>
#include <QString>

namespace veilkeep {

// The application's own name, as texts show it.
inline QString applicationName() {
    return QStringLiteral("Veilkeep");
}

} // namespace veilkeep
