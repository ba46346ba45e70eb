#pragma once

#include "app/StartOptions.h"
#include "app/Translations.h"
#include "filelist/FileOrder.h"
#include "groups/GroupsInfoFile.h"
#include "platform/linux/ApplicationOnBus.h"
#include "widgets/dialogs/ReportWindow.h"
#include "widgets/mainwindow/Commands.h"

#include <QApplication>
#include <QUrlQuery>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veilkeep {

class FilesViewController;
class GroupViewController;
class SessionBusConnection;
class VeilkeepWindow;
struct ProblemReport;
struct UncaughtException;

// The application object: starts and ends the desktop application in their order, and leads what menus ask
// for to the lists and the window. Made by main(); main thread but for handleGenericException().
class ADApp : public QApplication, public CommandTarget {
    Q_OBJECT

public:
    struct Parts;

    ADApp(int& argc, char** argv, StartOptions options);
    ~ADApp() override;

    int run();    // until the program is to end; the exit status
    bool start(); // all of it but the event loop; false: the program is to end, as exitStatus() says
    int exitStatus() const { return m_exitStatus; }
    Parts& parts() { return *m_parts; } // while it runs
    Translations& translations() { return m_translations; }

    bool isStillLaunching() const { return m_isStillLaunching; }
    void setTestCrashesMode(bool crashes) { m_testCrashesMode = crashes; }

    // --- Showing the application; each asks for the password where it has to ---
    void showVeilkeepActivateApp(bool ignoringOthers);
    void showVeilkeep() { showVeilkeepActivateApp(true); }
    bool applicationOpenUntitledFile(); // the launcher was used; false while the program starts
    void openFiles(const std::vector<std::string>& paths); // with the application
    void showItems(const OpenRequest& request); // selected in the list; added to it where they are not there

    void applicationShouldTerminate(); // hides, asks where that failed, saves and ends

    // --- A relaunch (ADAppRelaunch.cpp), which parts().relaunching begins ---
    void applicationWillBeRelaunched();    // the next quit hides nothing
    void updaterWillRelaunchApplication(); // takes messages that nothing depends on out of the way
    bool isRelaunchHeldUp();               // by a sheet with something to decide, which comes to the front

    // --- CommandTarget (ADAppCommands.cpp) ---
    void perform(Command command) override;
    CommandState validate(Command command) const override;
    bool exists(Command command) const override;

    // --- The preferences (ADAppPreferences.cpp) ---
    void showPreferenceWindow();
    void openPassDialog();        // where the password is set
    void changePassButtonState(); // menu and toolbar say whether there is one

    // --- The status menu (ADAppStatusMenu.cpp) ---
    void setStatusBarItem();
    void removeStatusBarItem();
    bool hasStatusBarItem() const;

    // --- Exceptions that nobody caught, and problem reports (ADAppReports.cpp) ---
    void reportException(const UncaughtException& exception);
    static void handleGenericException(const UncaughtException& exception);
    // Any thread: the report is made on the main one; another one may be ended after.
    void handleGenericException(const UncaughtException& exception, bool manualThreadExit);
    void sendFeedback(); // a report that nothing uncaught was the reason for

    bool notify(QObject* receiver, QEvent* event) override;

private:
    enum class Start { Goes, Ends };

    // Starting (ADApp.cpp).
    void init();
    Start becomeTheOnlyOne();
    Start takeList();
    void awakeFromNib();
    void connectGroupEditing();
    void followColorScheme(bool isDark);
    void finishLaunching();
    void applicationDidFinishLaunching();
    void whenLaunched(const std::function<void()>& request);
    void whenIdle(const std::function<void()>& operation);
    void tellOfDamagedSettings(const Result<std::optional<std::string>>& kept);
    void refuse(const QString& title, const QString& message);

    // Items from outside (ADAppItems.cpp).
    void open(const OpenRequest& request);
    void addAndSelect(const std::vector<std::string>& paths);
    void inOpenWindow(const std::function<void()>& operation); // where it may be shown

    // Ending (ADAppEnding.cpp).
    void closeAsked();
    void tellOfNoIcon();
    void askAfterPass(bool allWell);
    bool mayEndUnsaved();
    void stayAfterAll();
    void end();
    void quitAlsoWhileStarting();

    // ADAppCommands.cpp
    struct CommandRow;
    static const CommandRow commandRows[];
    static const CommandRow* rowOf(Command command);
    FilesViewController& files() const;
    GroupViewController& groups() const;
    void inWindow(void (VeilkeepWindow::*operation)());
    void nameInfoPane(CommandState& state) const;
    void whenAllowed(const std::function<void()>& operation);
    void openFilesPanel();
    void openWithApplicationOtherSelected();
    void makeManualAutoHide();
    void makeManualAutoUnhide();
    void hideOrShowGroup(const ListedGroup& group, bool hides);
    void sort(SortKey key);

    // ADAppPreferences.cpp
    void awakePreferences();
    void bringUpPreferences(const std::function<void()>& prepare);
    void closePreferencesBehindPassword();
    void namePassword(CommandState& state) const;

    // ADAppHelp.cpp
    void openGuide(const QString& section, const QUrlQuery& query = {});
    void visitForum();
    void visitSupportCenter();
    void showAboutWindow();
    void checkForUpdates();

    // ADAppReports.cpp
    void startReport(const UncaughtException& exception);
    bool offerReport(ProblemReport report, const QString& why);
    void reportLastCrash(); // once
    void sendFeedbackInThreadForException(const UncaughtException& exception);
    void actOnReport(ReportWindow::Action action, const std::string& path, const QString& text);

    const StartOptions m_options;
    Translations m_translations;
    std::unique_ptr<ApplicationOnBus> m_onBus;
    std::unique_ptr<SessionBusConnection> m_listBus; // as long as the list is ours: its end gives it back
    std::unique_ptr<Parts> m_parts;                  // while the list is owned
    ApplicationOnBus::Outcome m_bus = ApplicationOnBus::Outcome::NoBus;
    int m_exitStatus = 0;
    bool m_isStillLaunching = true;
    bool m_testCrashesMode = false;
    bool m_willBeRelaunched = false;
    bool m_isTerminating = false;
    bool m_hasEnded = false;
    std::vector<std::function<void()>> m_whenLaunched; // what the bus asked for meanwhile
    SortKey m_sortedBy = SortKey::Name;
    bool m_isSortedAscending = false;
};

} // namespace veilkeep
