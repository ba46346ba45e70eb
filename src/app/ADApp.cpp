#include "app/ADApp.h"
#include "app/ADAppParts.h"
#include "app/UncaughtExceptions.h"

#include "core/log/Log.h"
#include "filelist/Texts.h"
#include "format/ErrorText.h"
#include "platform/linux/BusRequest.h"
#include "session/ProcessInfo.h"
#include "widgets/controls/DarkPalette.h"
#include "widgets/images/ProgramImages.h"

#include <QThread>
#include <QTimer>

#include <cerrno>
#include <utility>

namespace veilkeep {
namespace {

// Until the window is on the screen; then all items are looked for.
constexpr std::chrono::milliseconds checkDelay{250};

// A single command of veilkeepctl may have the list.
constexpr std::chrono::seconds listWait{5};

} // namespace

ADApp::ADApp(int& argc, char** argv, StartOptions options)
    : QApplication(argc, argv), m_options(std::move(options)), m_onBus(std::make_unique<ApplicationOnBus>()) {
    m_translations.install();
    setApplicationName(veilkeep::applicationName());
    setApplicationDisplayName(veilkeep::applicationName());
    setApplicationVersion(ProcessInfo::applicationVersion());
    setDesktopFileName(QStringLiteral("com.ostrel.Veilkeep"));
    setQuitOnLastWindowClosed(false);
    setWindowIcon(programImage::named(QStringLiteral("com.ostrel.Veilkeep")));
}

// Events are worked on meanwhile, which look whether the parts are there.
ADApp::~ADApp() {
    m_parts.reset();
}

int ADApp::run() {
    if (start() && !m_hasEnded)
        m_exitStatus = exec();
    m_parts.reset();
    return m_exitStatus;
}

bool ADApp::start() {
    init();
    if (becomeTheOnlyOne() == Start::Ends || takeList() == Start::Ends)
        return false;
    awakeFromNib();
    finishLaunching();
    applicationDidFinishLaunching();
    return true;
}

void ADApp::init() {
    dropInheritedActivationToken();
    logLine(veilkeep::applicationName().toStdString() + " v. " + applicationVersion().toStdString() +
            "/" VEILKEEP_REVISION " started with arguments " + m_options.arguments + ".");
    connect(m_onBus.get(), &ApplicationOnBus::activated, this, [this](const QString& token) {
        if (m_isStillLaunching && m_options.opensWindow())
            return; // comes anyway
        whenLaunched([this, token] {
            m_parts->window.setActivationToken(token);
            applicationOpenUntitledFile();
        });
    });
    connect(m_onBus.get(), &ApplicationOnBus::opened, this,
            [this](const OpenRequest& request, const QString& token) {
                whenLaunched([this, request, token] {
                    m_parts->window.setActivationToken(token);
                    open(request);
                });
            });
}

// A message bus that starts the program calls at once.
void ADApp::whenLaunched(const std::function<void()>& request) {
    if (m_isStillLaunching)
        m_whenLaunched.push_back(request);
    else if (m_parts)
        request();
}

// A second start hands over what it was started for.
ADApp::Start ADApp::becomeTheOnlyOne() {
    m_bus = m_onBus->start();
    if (m_bus != ApplicationOnBus::Outcome::AnotherRuns)
        return Start::Goes;
    if (m_options.byLogin || m_options.asService)
        return Start::Ends;
    if (!ApplicationOnBus::forwardToRunning(m_options.toOpen, m_options.activationToken))
        refuse(tr("%1 is running, but does not answer.").arg(veilkeep::applicationName()),
               tr("Please wait a moment, or end it and start it again."));
    return Start::Ends;
}

// "veilkeepctl watch" gives the list up, a single command will soon be through.
ADApp::Start ADApp::takeList() {
    m_listBus = std::make_unique<SessionBusConnection>();
    if (m_listBus->isConnected()) {
        const QDBusMessage yield = QDBusMessage::createMethodCall(requestService, requestObject,
                                                                  requestInterface, QStringLiteral("Yield"));
        m_listBus->callWithEvents(yield); // an error: nobody has it
    }
    const OwnPlaces places = OwnPlaces::current();
    auto lock = ListOwnership::take(places.dataDirectory, listWait);
    if (lock) {
        m_parts = std::make_unique<Parts>(*this, std::move(*lock), places);
        return Start::Goes;
    }
    const Error& error = lock.error();
    if (error.systemError == EWOULDBLOCK)
        refuse(tr("Another program is using the list of %1.").arg(veilkeep::applicationName()),
               tr("Only one program at a time can work on it. Please end the other one first."));
    else
        refuse(tr("The list of %1 cannot be used.").arg(veilkeep::applicationName()), errorWithPath(error));
    return Start::Ends;
}

void ADApp::refuse(const QString& title, const QString& message) {
    m_exitStatus = 1;
    logLine(title.toStdString());
    Alert alert;
    alert.style = Alert::Style::Critical;
    alert.title = title;
    alert.message = message;
    alert.buttons = {{tr("OK"), Alerts::defaultAnswer}};
    AlertWindows([] { return nullptr; }).run(alert);
}

void ADApp::awakeFromNib() {
    OwnList& list = m_parts->list;
    connect(&list.window(), &MainWindowController::ended, this, [this] {
        m_parts->relaunching.takeBack(); // the session ends, or the program for good
        quitAlsoWhileStarting();
    });
    connect(&m_parts->window, &ShownWindow::made, this, [this](VeilkeepWindow& window) {
        window.setWindowTitle(veilkeep::applicationName());
        connect(&window, &VeilkeepWindow::closeAsked, this, &ADApp::closeAsked);
        connect(&window, &VeilkeepWindow::itemsDropped, this,
                [this] { m_parts->sounds.playSound("DropSound"); });
        connect(&window, &VeilkeepWindow::infoViewStateChangedTo, this,
                [this] { m_parts->sounds.playSound("PanelSound"); });
        connect(&window, &VeilkeepWindow::chooseApplicationRequested, this,
                &ADApp::openWithApplicationOtherSelected);
    });
    connectGroupEditing();
    connect(&m_parts->window, &ShownWindow::shown, this, &ADApp::reportLastCrash, Qt::QueuedConnection);
    connect(&m_parts->events, &LinuxSessionEvents::sessionBusCameUp, this,
            [this] { m_bus = m_onBus->start(); });
    connect(&m_parts->relaunching, &Relaunching::QSApplicationWillRelaunchNotification, this, [this] {
        updaterWillRelaunchApplication();
        dropInheritedActivationToken();
    });
    awakePreferences();
    connect(&m_parts->trayHost, &TrayHost::availableChanged, &m_parts->taskbarEntries,
            &TaskbarEntries::update,
            Qt::QueuedConnection); // once the icon has followed
    connect(&m_parts->colorScheme, &ColorScheme::darkChanged, this, &ADApp::followColorScheme);
    connect(&list.files().hideOperations(), &HideOperations::batchRunningChanged, this,
            [this](bool isRunning) {
                const bool hasMoved = !m_parts->list.files().hideOperations().lastBatch().empty();
                if (!isRunning && hasMoved && !m_parts->list.turns().isNobodyThere())
                    m_parts->sounds.playSound("HideSound");
            });
    list.load();
    list.follow(m_options.isRelaunch); // else hides first what a former run left visible
    m_parts->serve();
}

// Later: a name that is edited in the list is applied first, and the user may be gone by then.
void ADApp::connectGroupEditing() {
    const auto inWindow = [this](const std::function<void()>& edit) {
        whenIdle([this, edit] {
            if (m_parts->window.isVisible())
                edit();
        });
    };
    GroupViewController& groups = m_parts->list.groups();
    connect(
        &groups, &GroupViewController::editGroupRequested, this,
        [this, inWindow](const ListedGroup& group) {
            inWindow([this, group] { m_parts->groupEdit.editGroup(group); });
        },
        Qt::QueuedConnection);
    connect(
        &groups, &GroupViewController::editCellRequested, this,
        [this, inWindow](const ListedGroup& group, const QString& typed) {
            inWindow([this, group, typed] { m_parts->groupEdit.editCell(group, typed); });
        },
        Qt::QueuedConnection);
}

// Where the desktop gives Qt dark colours itself these are better.
void ADApp::followColorScheme(bool isDark) {
    if (isDark && !veilkeep::isDark(palette()))
        setPalette(darkPalette());
    else if (!isDark && palette() == darkPalette())
        setPalette(QPalette());
}

void ADApp::finishLaunching() {
    QTimer::singleShot(checkDelay, this, [this] {
        if (!m_parts)
            return; // events are worked on while they are taken down as well
        m_parts->list.check();
        m_parts->finderPlugin.renew();
    });
    m_parts->window.setActivationToken(m_options.activationToken);
    if (m_options.opensWindow())
        showVeilkeep();
    if (m_options.opensWindow() && !m_parts->list.window().windowState())
        return; // refused
    QTimer::singleShot(0, this, [this] { open(m_options.toOpen); });
}

void ADApp::applicationDidFinishLaunching() {
    if (m_parts->prefs.needToCreateAutoHideExample())
        m_parts->list.groups().makeAutoHideExampleGroup();
    m_isStillLaunching = false;
    setStatusBarItem();
    tellOfDamagedSettings(m_parts->damagedSettings);
    QTimer::singleShot(0, this, [this] {
        for (const auto& request : std::exchange(m_whenLaunched, {}))
            whenLaunched(request);
    });
}

void ADApp::showVeilkeepActivateApp(bool ignoringOthers) {
    const auto show = [this, ignoringOthers] {
        m_parts->list.window().showVeilkeepActivateApp(ignoringOthers);
    };
    if (m_parts && m_parts->list.window().operationAllowedWithoutAsking())
        show();
    else
        whenIdle(show);
}

bool ADApp::applicationOpenUntitledFile() {
    if (m_isStillLaunching || m_isTerminating)
        return false;
    showVeilkeep();
    return true;
}

// What opens a window of its own would hold up a batch in whose midst it was asked for. Dropped where the
// user leaves before.
void ADApp::whenIdle(const std::function<void()>& operation) {
    if (!m_parts)
        return;
    if (!m_parts->list.turns().isRunning())
        return operation();
    m_parts->list.turns().run([this, operation] {
        if (!m_parts->list.turns().isLeaving())
            QTimer::singleShot(0, this, [this, operation] { whenIdle(operation); });
    });
}

bool ADApp::notify(QObject* receiver, QEvent* event) {
    try {
        // While a request waits, its caller's language is not that of what else goes on.
        const bool isSilent = !m_translations.isTranslating() && QThread::currentThread() == thread();
        const LanguageGuard usersLanguage(isSilent ? &m_translations : nullptr, true);
        return QApplication::notify(receiver, event);
    } catch (...) {
        reportException(UncaughtException::from(std::current_exception()));
        return false;
    }
}

} // namespace veilkeep
