#pragma once

#include "core/environment/XdgDirectories.h"
#include "core/storage/ListOwnership.h"
#include "ctl/TerminalOutput.h"
#include "platform/Request.h"

#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veilkeep {

class QuitSignals;
class SessionBusConnection;

// "veilkeepctl watch": owns the list without a window, works on other programs' requests, and has the
// AutoHide groups hidden when the user leaves. A starting application gets the list, and this program takes
// it back when that has ended. Made by main(); main thread.
class Watch : public QObject {
    Q_OBJECT

public:
    explicit Watch(TerminalOutput& output); // not owned
    ~Watch() override;

    RequestStatus run(); // until the program is to end

private slots:
    void tryToOwn();

private:
    struct Service;
    struct Taker {
        QString program; // its unique name on the bus
        std::function<void()> tellThatItIsFree;
    };

    std::optional<RequestStatus> begin();
    void own(ListOwnership lock);
    void showWhatIsHidden();
    void end();

    void give(const Taker& taker);
    void giveUp();
    void standBy(const std::vector<Taker>& takers);
    bool isOnBus(const QString& name) const;

    std::string m_workerPath;
    const OwnPlaces m_places = OwnPlaces::current();
    TerminalOutput& m_output;
    QEventLoop m_loop;
    bool m_hasEnded = false;
    std::unique_ptr<Service> m_service; // while it owns the list
    std::vector<Taker> m_takers;        // who waits for it

    // While another program owns the list.
    std::unique_ptr<SessionBusConnection> m_bus;
    std::unique_ptr<QDBusServiceWatcher> m_others;
    std::unique_ptr<QuitSignals> m_quitSignals;
    QTimer m_again;
};

} // namespace veilkeep
