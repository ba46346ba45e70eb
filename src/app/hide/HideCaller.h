#pragma once

#include "alerts/Alerts.h"
#include "platform/Request.h"

#include <QStringList>

#include <string>
#include <vector>

namespace veilkeep {

// The person who chose items to hide in a menu of the desktop: has no terminal, so questions come as windows,
// and what went wrong is kept for one window at the end. Lives for one request; main thread.
class HideCaller : public RequestCaller {
public:
    explicit HideCaller(Alerts& alerts) : m_alerts(alerts) {} // not owned

    void cancel(); // the session ends: nothing is asked any more, and no further item begun
    void tellTroubles();

    void itemDone(const std::string&, const std::string&) override {} // it is gone from view, which tells it
    void itemFailed(const std::string& path, const QString& reason) override;
    void message(const QString& text) override { m_messages.append(text); }
    void listed(const std::vector<QVariantMap>&) override {}
    void progress(const QString&, const QString&, std::size_t, std::size_t) override {}
    std::size_t ask(const Question& question) override;
    std::optional<QString> askPassword(const QString&, int) override {
        return std::nullopt;
    } // never asked for
    void cancelQuestion() override;
    bool isCancelled() const override { return m_isCancelled; }

private:
    Alerts& m_alerts;
    std::vector<ErrorEntry> m_failed;
    QStringList m_messages; // about the request as a whole
    bool m_isCancelled = false;
};

} // namespace veilkeep
