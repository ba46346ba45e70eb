#include "app/ADApp.h"
#include "app/ADAppParts.h"

#include "core/log/Log.h"
#include "core/storage/DefaultsKeys.h"
#include "filelist/Texts.h"
#include "format/ErrorText.h"
#include "session/LeavingTriggers.h"

namespace veilkeep {

void ADApp::applicationShouldTerminate() {
    if (!m_parts || m_isTerminating)
        return;
    m_isTerminating = true;
    if (m_willBeRelaunched && !m_parts->relaunching.isUnderWay()) {
        logLine("The process that was to take over is gone");
        m_willBeRelaunched = false;
    }
    auto allWell = std::make_shared<bool>(true);
    if (!m_willBeRelaunched)
        m_parts->list.window().leave([this, allWell] {
            if (hidesOnQuit(m_parts->defaults))
                *allWell = m_parts->list.groups().makeAutoHide(QStringLiteral("the user quits"));
            m_parts->list.window().hideWindow();
        });
    m_parts->list.turns().run([this, allWell] { askAfterPass(*allWell); });
}

void ADApp::askAfterPass(bool allWell) {
    if (!allWell) {
        HideOperations& operations = m_parts->list.files().hideOperations();
        const int answer =
            operations.showErrorsMessage(tr("Some errors have been occured while hiding files"), QString(),
                                         {tr("Return to Veilkeep"), tr("Force Quit")});
        if (answer == Alerts::firstButton) {
            stayAfterAll();
            operations.clearErrorList();
            return;
        }
    }
    m_parts->list.save();
    if (!mayEndUnsaved())
        return stayAfterAll();
    if (!m_willBeRelaunched)
        m_parts->offer.handleApplicationLaunchFromDiskImage();
    end();
}

// What a full disk keeps from the lists would be lost with the program.
bool ADApp::mayEndUnsaved() {
    const auto& files = m_parts->list.files().saveTrouble();
    const auto& trouble = files ? files : m_parts->list.groups().saveTrouble();
    if (!trouble || trouble->code == ErrorCode::NotDurable)
        return true;
    Alert alert;
    alert.style = Alert::Style::Critical;
    alert.title = tr("The last changes could not be saved.");
    alert.message = errorWithPath(*trouble);
    alert.cancellingCode = Alerts::firstButton;
    return m_parts->list.alerts().runAlert(alert, {tr("Return to Veilkeep"), tr("Quit Anyway")}) !=
           Alerts::firstButton;
}

void ADApp::stayAfterAll() {
    m_isTerminating = false;
    m_willBeRelaunched = false;
    m_parts->relaunching.takeBack();
    showVeilkeep();
}

void ADApp::end() {
    m_parts->list.turns().close();
    logLine(QStringLiteral("%1 v. %2 terminated...")
                .arg(veilkeep::applicationName(), applicationVersion())
                .toStdString());
    quitAlsoWhileStarting();
}

// A prompt may be open that start() waits for, and quit() ends only event loops that turn.
void ADApp::quitAlsoWhileStarting() {
    m_hasEnded = true;
    quit();
}

// The program goes on where there is a way back to the window.
void ADApp::closeAsked() {
    m_bus = m_onBus->start(); // as it is now
    if (!hasStatusBarItem() && m_bus != ApplicationOnBus::Outcome::Primary)
        return applicationShouldTerminate();
    m_parts->list.window().hideWindow();
    closePreferencesBehindPassword();
    const bool isWished = m_parts->prefs.showsMenuIcon();
    if (!hasStatusBarItem() && isWished &&
        !m_parts->defaults.boolean(defaultsKey::toldOfNoMenuIcon).value_or(false))
        whenIdle([this] { tellOfNoIcon(); });
}

void ADApp::tellOfNoIcon() {
    m_parts->defaults.set(defaultsKey::toldOfNoMenuIcon, true);
    if (const auto stored = m_parts->defaults.synchronize(); !stored)
        logError("That the user was told of the missing icon is not stored", stored.error());
    m_parts->list.alerts().beginInformationalAlertSheet(
        tr("%1 goes on without a window.").arg(veilkeep::applicationName()),
        tr("This desktop has no place for the program's icon. Start %1 once more to see its window "
           "again; choose Quit in its menu to end it.")
            .arg(veilkeep::applicationName()));
}

} // namespace veilkeep
