#pragma once

#include <QObject>

namespace veilkeep {

// Brings each window of this process to the front as it is shown, and keeps it there: what it asks is waited
// for by another program. A child of the application; main thread.
class FrontWindows : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    bool eventFilter(QObject* object, QEvent* event) override;
};

} // namespace veilkeep
