#include "app/ADApp.h"
#include "app/ADAppParts.h"

#include "core/log/Log.h"
#include "filelist/Texts.h"
#include "format/ErrorText.h"
#include "widgets/dialogs/windowPlacement.h"

namespace veilkeep {

void ADApp::awakePreferences() {
    PrefsController& prefs = m_parts->prefs;
    prefs.setDelegate({[this] { setStatusBarItem(); }, [this] { removeStatusBarItem(); }});
    prefs.setPasswordManager(&m_parts->list.passwords());
    connect(&prefs, &PrefsController::PasswordChanged, this, &ADApp::changePassButtonState);
    m_parts->defaults.setDamagedWhileRunning([this](const std::string& kept) {
        const auto tell = [this, kept] {
            if (m_parts)
                tellOfDamagedSettings(std::optional(kept));
        };
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
    });
    connect(&m_parts->list.window(), &MainWindowController::left, this,
            &ADApp::closePreferencesBehindPassword);
}

void ADApp::tellOfDamagedSettings(const Result<std::optional<std::string>>& kept) {
    if (!kept) {
        logError("The damaged settings cannot be put aside", kept.error());
        m_parts->tellTrouble(tr("The settings are damaged and count as not set."), kept.error());
    } else if (*kept)
        m_parts->list.alerts().beginInformationalAlertSheet(
            tr("The settings were damaged and begin anew."),
            tr("What they were is kept in %1. Where a password was set, please set it again.")
                .arg(shownPath(**kept)));
}

void ADApp::showPreferenceWindow() {
    whenAllowed([this] { bringUpPreferences([] {}); });
}

void ADApp::openPassDialog() {
    whenAllowed([this] {
        bringUpPreferences([this] {
            m_parts->prefs.setSelectedTab(QStringLiteral("TOOLBAR_SECURITY"));
            if (!m_parts->prefs.passwordProtected())
                m_parts->prefs.makeActiveTabWithIdentifier(QStringLiteral("SET_PASSWORD"));
        });
    });
}

void ADApp::bringUpPreferences(const std::function<void()>& prepare) {
    auto& window = m_parts->preferences;
    if (!window)
        window = std::make_unique<PrefsWindow>(m_parts->prefs);
    prepare();
    if (window->isVisible())
        m_parts->prefs.windowWillAppear(); // another program may have changed the settings since
    else
        window->betterCenter();
    window->isMinimized() ? window->showNormal() : window->show();
    window->raise();
    window->activateWindow();
}

// Nobody who would have to enter the password may go on in there.
void ADApp::closePreferencesBehindPassword() {
    if (m_parts->preferences && m_parts->prefs.passwordProtected())
        m_parts->preferences->close();
}

void ADApp::changePassButtonState() {
    if (VeilkeepWindow* const window = m_parts->window.window())
        window->validateCommands();
}

void ADApp::namePassword(CommandState& state) const {
    const bool isProtected = m_parts && m_parts->prefs.passwordProtected();
    state.title = isProtected ? tr("Change Password") : tr("Set Password");
    state.toolTip = isProtected ? tr("Change application password") : tr("Set application password");
}

} // namespace veilkeep
