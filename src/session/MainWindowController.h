#pragma once

#include "groups/GroupViewController.h"
#include "prefs/PasswordManager.h"
#include "session/Gate.h"
#include "session/Presence.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>
#include <string>

namespace veilkeep {

// The window of which MainWindowController decides when it is seen. Main thread.
class MainWindow {
public:
    virtual ~MainWindow() = default;

    virtual bool isVisible() const = 0;
    virtual void show() = 0;
    virtual void close() = 0;
    virtual void activate(bool ignoringOthers) = 0; // brings the program to the front

protected:
    MainWindow() = default;
    MainWindow(const MainWindow&) = default;
    MainWindow& operator=(const MainWindow&) = default;
};

// What the main window's logic works with. Nothing of it is owned; all of it outlives the controller.
struct MainWindowControllerParts {
    GroupViewController& groups;
    FilesViewController& files;
    const AutoHideMark& mark;
    PasswordManager& passwords;
    Turns& turns;
    const UserDefaults& defaults;
    SessionEvents* events = nullptr; // none: nothing is observed
    MainWindow* window = nullptr;    // none: a program without one
};

// Hides the AutoHide groups when the user leaves or the program has to end, shows them when he comes back,
// and says whether a protected operation may run. Owned by the program's wiring; main thread.
class MainWindowController : public QObject, public Gate {
    Q_OBJECT
public:
    explicit MainWindowController(const MainWindowControllerParts& parts);
    ~MainWindowController() override;

    static MainWindowController* sharedInstance(); // null where none was made
    static std::string cloakWorkerPath();

    // Hides first what a former run left visible, unless this one goes on in its place or quitting does not
    // hide, then listens.
    void start(bool goesOn = false);

    // The window goes once the groups are hidden. An open prompt goes at once.
    void lockApplication(Absence kind);

    // Runs the pass as soon as what runs has come to its end. An open prompt goes at once, and what would
    // still show something is void.
    void leave(const std::function<void()>& pass);

    // In its turn. Nothing while a prompt is open, or while the user is known to be away.
    void unlockApplication();

    // Shows the window if that is allowed, and what is hidden of the AutoHide groups a moment later. At once:
    // whoever calls it from outside of a turn does so for somebody at the screen.
    void showVeilkeepActivateApp(bool ignoringOthers);

    void hideWindow();
    bool windowState() const;
    void addFile(const std::string& path) { addFiles({path}); }
    void addFiles(const std::vector<std::string>& paths); // in their turn

    // In its turn, after the AutoHide groups that come back with the window, which clears the selection.
    // Dropped where the window goes before.
    void whenOpen(const std::function<void()>& operation);

    // Gate
    bool operationAllowedWithoutAsking() const override;
    bool operationAllowed() override;

signals:
    void left(); // the user leaves, or the program is to end: what must not stay open goes
    void ended(veilkeep::Ending ending); // everything that had to be done before the program ends is done

private:
    void end(Ending ending);
    void unhideSoon();
    void passOver(Absence kind);

    const MainWindowControllerParts m_parts;
    std::unique_ptr<Presence> m_presence; // none where nothing is observed
    QTimer m_unhide;
    unsigned int m_departures = 0; // so far
    int m_leavings = 0;            // whose passes have not come to their end
    bool m_isUnlocking = false;    // or waits for its turn
    bool m_isEnding = false;
};

} // namespace veilkeep
