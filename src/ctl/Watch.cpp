#include "ctl/Watch.h"

#include "core/log/Log.h"
#include "ctl/DamagedSettings.h"
#include "ctl/Interruption.h"
#include "ctl/UnattendedPresenter.h"
#include "format/ErrorText.h"
#include "platform/EventLoop.h"
#include "platform/linux/BusNotifications.h"
#include "platform/linux/BusRequest.h"
#include "platform/linux/LinuxSessionEvents.h"
#include "platform/linux/QuitSignals.h"
#include "platform/linux/RequestService.h"
#include "wiring/OwnList.h"
#include "wiring/RequestRoute.h"

#include <QCoreApplication>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <utility>

namespace veilkeep {
namespace {

using Clock = std::chrono::steady_clock;

// Between two tries to own the list while somebody has it who is not on the bus.
constexpr std::chrono::milliseconds pause{500};

// Requests, and the user's leaving, are noticed while a worker is waited for.
void turnEventLoop() {
    wakeEventLoop();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

// Those who use them store at once.
struct ToldDefaults : UserDefaults {
    explicit ToldDefaults(TerminalOutput& output) { tellOfDamagedSettings(*this, output); }
};

} // namespace

struct Watch::Service {
    Service(ListOwnership taken, const std::string& workerPath, const OwnPlaces& places,
            TerminalOutput& output)
        : lock(std::move(taken)),
          defaults(output),
          list(defaults, workerPath, places,
               {.tick = turnEventLoop,
                .presenter = &presenter,
                .notifications = &notifications,
                .events = &events}) {}

    void serve() {
        if (const auto served = requests.start(); !served)
            logError("Requests of other programs are not heard", served.error());
    }

    ListOwnership lock; // is given back last
    BusNotifications notifications;
    UnattendedPresenter presenter;
    LinuxSessionEvents events;
    ToldDefaults defaults;
    OwnList list;
    RequestService requests{list.requests()};
};

Watch::Watch(TerminalOutput& output) : m_output(output) {
    m_again.setSingleShot(true);
    m_again.setInterval(pause);
    connect(&m_again, &QTimer::timeout, this, &Watch::tryToOwn);
}

Watch::~Watch() = default;

RequestStatus Watch::run() {
    const auto worker = usableWorker([this](const std::string& path, const QString& reason) {
        m_output.printError(path, reason.toStdString());
    });
    if (!worker)
        return RequestStatus::SomeFailed;
    m_workerPath = *worker;
    if (const auto status = begin())
        return *status;
    if (!m_hasEnded)
        m_loop.exec();
    return RequestStatus::AllWell;
}

// A status where there is nothing to watch for.
std::optional<RequestStatus> Watch::begin() {
    const auto end = Clock::now() + RequestRoute::ownerWait;
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
        auto lock = ListOwnership::take(m_places.dataDirectory,
                                        std::clamp(left, std::chrono::milliseconds(0), pause));
        if (lock) {
            own(std::move(*lock));
            QTimer::singleShot(Presence::quiet, this, &Watch::showWhatIsHidden);
            return std::nullopt;
        }
        if (lock.error().systemError != EWOULDBLOCK) {
            m_output.printError(lock.error().path, errorReason(lock.error()).toStdString());
            return RequestStatus::Refused;
        }
        if (RequestClient().isServed()) {
            standBy({});
            return std::nullopt;
        }
        if (Interruption::isAsked())
            return RequestStatus::AllWell; // nothing was shown that would have to be hidden
        if (left.count() <= 0) {
            m_output.printMessage(
                QCoreApplication::translate("Watch", "another process owns the list and did not answer"));
            return RequestStatus::OwnerSilent;
        }
    }
}

void Watch::own(ListOwnership lock) {
    m_quitSignals.reset();
    m_others.reset();
    m_bus.reset();
    logLine("Watching for the user's leaving and coming back.");
    m_service = std::make_unique<Service>(std::move(lock), m_workerPath, m_places, m_output);
    connect(&m_service->list.window(), &MainWindowController::ended, this, &Watch::end);
    m_service->requests.setGiveList([this](const QString& program, std::function<void()> tellThatItIsFree) {
        give({program, std::move(tellThatItIsFree)});
    });
    m_service->serve();
    connect(&m_service->events, &LinuxSessionEvents::sessionBusCameUp, &m_service->requests,
            [service = m_service.get()] { service->serve(); });
    m_service->list.start();
    if (Interruption::isAsked()) // before there was somebody to tell it
        emit m_service->events.endRequested(Ending::Signal);
}

void Watch::end() {
    m_hasEnded = true;
    m_loop.quit();
}

// As any coming back would; by now the desktop has told where the user is.
void Watch::showWhatIsHidden() {
    if (m_service)
        m_service->list.window().unlockApplication();
}

void Watch::give(const Taker& taker) {
    m_takers.push_back(taker);
    if (m_takers.size() > 1)
        return;
    Turns& turns = m_service->list.turns();
    turns.run([this, &turns] {
        m_service->list.save();
        turns.close();
        QTimer::singleShot(0, this, &Watch::giveUp);
    });
}

// From the event loop, once nothing of the list is at work any more.
void Watch::giveUp() {
    if (Turns& turns = m_service->list.turns(); turns.isRunning()) {
        turns.leave([this] { QTimer::singleShot(0, this, &Watch::giveUp); });
        return;
    }
    const std::vector<Taker> takers = std::exchange(m_takers, {});
    m_service.reset();
    standBy(takers);
    for (const Taker& taker : takers)
        taker.tellThatItIsFree();
}

// Until the takers, or whoever serves in this program's place, leave the bus.
void Watch::standBy(const std::vector<Taker>& takers) {
    m_quitSignals = std::make_unique<QuitSignals>();
    connect(m_quitSignals.get(), &QuitSignals::quitAsked, this, &Watch::end);
    m_quitSignals->start();
    if (Interruption::isAsked())
        return end();
    logLine("Another program owns the list; waiting for its end.");
    m_bus = std::make_unique<SessionBusConnection>();
    m_others = std::make_unique<QDBusServiceWatcher>();
    m_others->setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    m_others->setConnection(m_bus->connection());
    connect(m_others.get(), &QDBusServiceWatcher::serviceUnregistered, this, &Watch::tryToOwn,
            Qt::QueuedConnection);
    m_others->addWatchedService(requestService);
    // A bus that ends takes with it the word that the others have ended.
    m_bus->connection().connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                                QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"),
                                this, SLOT(tryToOwn()));
    for (const Taker& taker : takers)
        m_others->addWatchedService(taker.program);
    const auto isGone = [this](const Taker& taker) { return !isOnBus(taker.program); };
    if (takers.empty() ? !isOnBus(requestService) : std::ranges::all_of(takers, isGone))
        m_again.start();
}

bool Watch::isOnBus(const QString& name) const {
    return m_bus &&
           m_bus->askBus(QStringLiteral("NameHasOwner"), name).arguments().value(0) == QVariant(true);
}

void Watch::tryToOwn() {
    if (m_service)
        return;
    if (auto lock = ListOwnership::take(m_places.dataDirectory, std::chrono::milliseconds(0)))
        own(std::move(*lock));
    else if (!isOnBus(requestService)) // else its end is told
        m_again.start();
}

} // namespace veilkeep
