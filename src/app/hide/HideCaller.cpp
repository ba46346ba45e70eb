#include "app/hide/HideCaller.h"

#include "core/base/PathText.h"
#include "filelist/Texts.h"

#include <utility>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(HideCaller)
};

} // namespace

void HideCaller::cancel() {
    m_isCancelled = true;
    m_alerts.setNobodyThere(true);
}

void HideCaller::itemFailed(const std::string& path, const QString& reason) {
    m_failed.push_back({shownPath(lastPathComponent(path)), reason});
}

std::size_t HideCaller::ask(const Question& question) {
    Alert alert;
    alert.style = Alert::Style::Warning;
    alert.title = question.title;
    alert.message = question.message;
    const int answer =
        m_alerts.runAlert(std::move(alert), QStringList(question.buttons.begin(), question.buttons.end()));
    return static_cast<std::size_t>(answer - Alerts::firstButton);
}

// Whoever owns the list takes one back only because the user leaves. Also called at every request's end: once
// cancelled, nobody is asked any more.
void HideCaller::cancelQuestion() {
    m_alerts.setNobodyThere(true);
    m_alerts.setNobodyThere(m_isCancelled);
}

void HideCaller::tellTroubles() {
    if (m_failed.empty() && m_messages.isEmpty())
        return;
    Alert alert;
    alert.style = Alert::Style::Warning;
    if (m_failed.size() == 1) {
        alert.title = Texts::tr("The item “%1” could not be hidden.").arg(m_failed.front().fileName);
        m_messages.prepend(m_failed.front().errorCode);
    } else if (m_failed.empty()) {
        alert.title = m_messages.takeFirst();
    } else {
        alert.title = Texts::tr("Some errors have been occured while hiding files");
        alert.errors = m_failed;
    }
    alert.message = m_messages.join(QLatin1Char('\n'));
    m_alerts.runAlert(std::move(alert), {Texts::tr("OK")});
}

} // namespace veilkeep
