#pragma once

#include "core/base/Result.h"

#include <QObject>
#include <QString>

namespace veilkeep {

// Notes that programs of the same user pass to each other, "com.ostrel.Veilkeep.rereadTempFiles" above all.
// Whoever posts one is told of it too. Owned by the program's main(); main thread.
class DistributedNotifications : public QObject {
    Q_OBJECT

public:
    // Without waiting for anybody to take it.
    [[nodiscard]] virtual Result<void> post(const QString& name, const QString& object) = 0;

signals:
    void posted(const QString& name, const QString& object); // object is empty where none was given
};

} // namespace veilkeep
