#pragma once

#include "alerts/Alerts.h"
#include "platform/Processes.h"

#include <QObject>

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <string>

namespace veilkeep {

// What a relaunch needs of the application object.
struct RelaunchDelegate {
    std::function<void()> applicationWillBeRelaunched; // the next quit is part of it
    std::function<void()> terminate;                   // quits as the user does
    std::function<bool()> isHeldUp = {};               // by what the user has to decide first; nothing begins
};

// Ends the program and starts it anew. The new process learns from its environment whom it replaces, and
// waits for that one's end. Owned by the application; main thread.
class Relaunching : public QObject {
    Q_OBJECT

public:
    static constexpr const char* marker = "relaunchFromPid"; // the old process' number, in decimal digits
    static constexpr std::chrono::minutes formerProcessWait{5};

    Relaunching(Alerts& alerts, RelaunchDelegate delegate); // the alerts are not owned

    void requestRelaunch(); // asks first
    void relaunch() { relaunchFromPath({}); }

    // Of the bundle there, or the running one. Where it cannot be started that is told, and nothing ends.
    void relaunchFromPath(const std::string& bundle);

    // The user stays after all: the process that waits for our end is not wanted.
    void takeBack();
    bool isUnderWay() const; // the new process is there and waits

    // Each puts the bundle at the source in the place of another one; a failure is told, and ends nothing.
    void relaunchAtPath(const std::string& path, const std::string& movedFromPath);
    void relaunchAfterMovingFromPath(const std::string& source);
    bool replaceWithUpdateFromPath(const std::string& source);

    // By a signal from outside, as if by another program; not within a turn. They come back only while the
    // program is about to end.
    static void killOurselves(std::chrono::milliseconds patience = std::chrono::minutes(1));
    static void restartOurselves(std::chrono::milliseconds patience = std::chrono::minutes(1));

    // At the start: waits for the process that the marker names, and takes the marker away. Whether there was
    // one that can be the former.
    static bool waitForFormerProcess(const Processes& processes,
                                     std::chrono::milliseconds limit = formerProcessWait);

signals:
    void QSApplicationWillRelaunchNotification();

private:
    bool moveTo(const std::string& path, const std::string& source);
    void tell(const QString& title, const Error& error);

    Alerts& m_alerts;
    const RelaunchDelegate m_delegate;
    pid_t m_started = 0; // 0: none
};

} // namespace veilkeep
