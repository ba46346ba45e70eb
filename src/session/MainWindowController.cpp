#include "session/MainWindowController.h"

#include "core/environment/Bundle.h"
#include "core/log/Log.h"
#include "filelist/Texts.h"
#include "session/LeavingTriggers.h"
#include "session/ProcessInfo.h"

#include <chrono>

namespace veilkeep {
namespace {

// From showing the window to moving files, so that it is on the screen by then.
constexpr std::chrono::milliseconds unhideDelay{100};

MainWindowController* shared = nullptr;

QString reasonOf(Absence kind) {
    switch (kind) {
    case Absence::Sleep:
        return QStringLiteral("the computer goes to sleep");
    case Absence::Lock:
        return QStringLiteral("the screen was locked");
    case Absence::Session:
        return QStringLiteral("the session went to the background");
    }
    return {};
}

QString reasonOf(Ending ending) {
    switch (ending) {
    case Ending::Signal:
        return QStringLiteral("the program was told to end");
    case Ending::Logout:
        return QStringLiteral("the user logs out");
    case Ending::Shutdown:
        return QStringLiteral("the computer shuts down");
    }
    return {};
}

} // namespace

MainWindowController::MainWindowController(const MainWindowControllerParts& parts) : m_parts(parts) {
    m_unhide.setSingleShot(true);
    m_unhide.setInterval(unhideDelay);
    connect(&m_unhide, &QTimer::timeout, this, &MainWindowController::unhideSoon);
    if (m_parts.events) {
        m_presence = std::make_unique<Presence>(
            *m_parts.events, [this](Absence kind) { return hidesOn(kind, m_parts.defaults); });
        connect(m_presence.get(), &Presence::left, this, &MainWindowController::lockApplication);
        connect(m_presence.get(), &Presence::passedOver, this, &MainWindowController::passOver);
        connect(m_presence.get(), &Presence::cameBack, this, &MainWindowController::unlockApplication);
        connect(m_parts.events, &SessionEvents::endRequested, this, &MainWindowController::end);
    }
    shared = this;
}

MainWindowController::~MainWindowController() {
    if (shared == this)
        shared = nullptr;
}

MainWindowController* MainWindowController::sharedInstance() {
    return shared;
}

std::string MainWindowController::cloakWorkerPath() {
    return bundledProgramPath(applicationBundlePath(), "cloakWorker");
}

void MainWindowController::start(bool goesOn) {
    if (m_parts.mark.isSet() && !goesOn && hidesOnQuit(m_parts.defaults))
        m_parts.turns.leave(
            [this] { m_parts.groups.makeAutoHide(QStringLiteral("found visible from a former run")); });
    if (m_parts.events)
        m_parts.events->start();
}

void MainWindowController::lockApplication(Absence kind) {
    ++m_leavings;
    leave([this, kind] {
        m_parts.groups.makeAutoHide(reasonOf(kind));
        hideWindow();
        --m_leavings;
        if (m_parts.events)
            m_parts.events->release();
    });
}

// Sleep is held up for what hides at another sign alone.
void MainWindowController::passOver(Absence kind) {
    if (kind == Absence::Sleep && m_leavings == 0)
        m_parts.events->release();
}

void MainWindowController::leave(const std::function<void()>& pass) {
    ++m_departures;
    m_isUnlocking = false;
    m_unhide.stop();
    m_parts.passwords.cancelClick();
    emit left();
    m_parts.turns.leave(pass);
}

void MainWindowController::unlockApplication() {
    if (m_isUnlocking || m_parts.passwords.isPromptVisible() || (m_presence && m_presence->isAway()))
        return;
    m_isUnlocking = true;
    m_parts.turns.run([this, departures = m_departures] {
        if (departures != m_departures)
            return;
        showVeilkeepActivateApp(false);
        if (departures == m_departures)
            m_isUnlocking = false;
    });
}

void MainWindowController::showVeilkeepActivateApp(bool ignoringOthers) {
    const unsigned int departures = m_departures;
    if (!operationAllowed() || departures != m_departures)
        return;
    if (m_parts.window) {
        m_parts.window->activate(ignoringOthers);
        m_parts.window->show();
    }
    m_unhide.start();
}

void MainWindowController::unhideSoon() {
    m_parts.turns.run([this, departures = m_departures] {
        if (departures == m_departures)
            m_parts.groups.autoUnhideThread();
    });
}

void MainWindowController::hideWindow() {
    if (m_parts.window)
        m_parts.window->close();
}

bool MainWindowController::windowState() const {
    return m_parts.window && m_parts.window->isVisible();
}

void MainWindowController::addFiles(const std::vector<std::string>& paths) {
    m_parts.turns.run([this, paths] { m_parts.files.addFiles(paths); });
}

void MainWindowController::whenOpen(const std::function<void()>& operation) {
    const auto take = [this, operation, departures = m_departures] {
        m_parts.turns.run([this, operation, departures] {
            if (windowState() && departures == m_departures)
                operation();
        });
    };
    if (m_unhide.isActive()) // what it starts comes first
        connect(&m_unhide, &QTimer::timeout, this, take, Qt::SingleShotConnection);
    else
        take();
}

bool MainWindowController::operationAllowedWithoutAsking() const {
    return !m_parts.passwords.isPasswordEnabled() || windowState();
}

bool MainWindowController::operationAllowed() {
    if (operationAllowedWithoutAsking())
        return true;
    if (m_parts.passwords.isPromptVisible() || m_parts.turns.isNobodyThere())
        return false;
    return m_parts.passwords.showModalWindow() != 0;
}

void MainWindowController::end(Ending ending) {
    if (m_isEnding)
        return;
    m_isEnding = true;
    leave([this, ending] {
        if (hidesOnQuit(m_parts.defaults))
            m_parts.groups.makeAutoHide(reasonOf(ending));
        hideWindow();
        m_parts.groups.saveDataToDisk();
        m_parts.files.saveDataToDisk();
        m_parts.turns.close();
        logLine(QStringLiteral("%1 v. %2 terminated...")
                    .arg(applicationName(), ProcessInfo::applicationVersion())
                    .toStdString());
        m_parts.events->release();
        emit ended(ending);
    });
}

} // namespace veilkeep
