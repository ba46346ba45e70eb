#pragma once

#include "core/base/UniqueFd.h"

#include <QObject>
#include <QSocketNotifier>

#include <signal.h>

#include <array>
#include <memory>

namespace veilkeep {

// SIGTERM, SIGHUP and SIGINT as a wish to end, told from the event loop; those that were ignored before stay
// so, as under nohup. One at a time in a process. Main thread.
class QuitSignals : public QObject {
    Q_OBJECT

public:
    ~QuitSignals() override; // what the signals did before

    void start();
    void handled() { m_isTold = false; } // the next one is told again

signals:
    void quitAsked(); // once for all that come until it is handled

private:
    void drain();

    static constexpr std::array numbers{SIGTERM, SIGHUP, SIGINT};

    UniqueFd m_reader, m_writer;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::array<struct sigaction, numbers.size()> m_before{};
    std::array<bool, numbers.size()> m_isTaken{};
    bool m_isTold = false;
};

} // namespace veilkeep
