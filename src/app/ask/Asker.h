#pragma once

#include "alerts/ADAlertManager.h"
#include "app/ask/AskRequest.h"
#include "platform/Trash.h"

#include <QString>

#include <optional>

namespace veilkeep {

// Puts one question and does what has to be done before its answer may be told. Main thread.
class Asker {
public:
    // Neither is owned.
    Asker(Alerts& alerts, Trash& trash) : m_alerts(alerts), m_manager(alerts), m_trash(trash) {}

    // The word for cloakWorker. Nothing where nobody decided, or where what was decided could not be done.
    // "Replace" comes only once the item in the way lies in the trash.
    std::optional<QString> answerTo(const AskRequest& request);

private:
    std::optional<QString> overwrite(const AskRequest& request);
    std::optional<QString> askAboutApplications(const AskRequest& request);
    void tellWhyNotReplaced(const QString& item, const Error& error);
    std::optional<QString> decided(const QString& word) const;

    Alerts& m_alerts;
    ADAlertManager m_manager;
    Trash& m_trash;
};

} // namespace veilkeep
