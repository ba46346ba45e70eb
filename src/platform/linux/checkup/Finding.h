#pragma once

#include <QString>
#include <QStringList>

namespace veilkeep {

// What one thing that Veilkeep needs of the desktop means for its user. English, as all of veilkeepctl.
struct CheckupFinding {
    enum class Status { Works, Limited, Fails };

    QString check; // one word for scripts: "tray"
    QString title;
    Status status = Status::Works;
    QString meaning;
    QString remedy = {};       // what can be done; empty where nothing has to be, or can be
    QStringList packages = {}; // of Debian's, to be installed for it
};

} // namespace veilkeep
