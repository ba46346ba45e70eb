#pragma once

#include "core/storage/UserDefaults.h"
#include "platform/SoftwareUpdates.h"

#include <QObject>
#include <QString>

namespace veilkeep {

// Looks for a newer version when the user asks for it, and says what came of it. Owned by the application;
// main thread.
class SoftwareUpdater : public QObject {
    Q_OBJECT

public:
    struct Answer {
        QString title, message;
    };

    SoftwareUpdater(SoftwareUpdates& updates, UserDefaults& defaults); // neither is owned

    void checkForUpdates(); // nothing while it looks already
    void cancel();
    bool isChecking() const { return m_isChecking; }

    static Answer answerFor(const UpdateOutcome& outcome);

signals:
    void ended(const veilkeep::SoftwareUpdater::Answer& answer);

private:
    void end(const UpdateOutcome& outcome);

    SoftwareUpdates& m_updates;
    UserDefaults& m_defaults;
    bool m_isChecking = false;
};

} // namespace veilkeep
