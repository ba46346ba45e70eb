// Veilkeep: the desktop application.

#include "app/ADApp.h"
#include "app/SelfTest.h"
#include "app/StartOptions.h"
#include "app/Translations.h"
#include "app/UncaughtExceptions.h"
#include "app/ask/RunAsk.h"
#include "app/hide/RunHide.h"
#include "core/environment/XdgDirectories.h"
#include "platform/linux/ActivationToken.h"
#include "platform/linux/LinuxProcesses.h"
#include "session/ProcessNote.h"
#include "session/Relaunching.h"
#include "widgets/dialogs/AlertWindows.h"

#include <QGuiApplication>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <span>

namespace {

using namespace veilkeep;

constexpr int failed = 1, wrongUsage = 2, refused = 3;

int print(const std::string& text) {
    return std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0 ? 0 : failed;
}

bool hasVariable(const char* name) {
    const char* value = std::getenv(name);
    return value && *value;
}

bool hasDisplay() {
    return hasVariable("DISPLAY") || hasVariable("WAYLAND_DISPLAY") || hasVariable("QT_QPA_PLATFORM");
}

int selfTest(char** argv) {
    if (!hasDisplay())
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    int noArguments = 1;
    const QGuiApplication application(noArguments, argv);
    return runSelfTest();
}

// Qt would end with a crash where a display that is named cannot be opened.
void tellWhileOpening(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type != QtFatalMsg) {
        std::fprintf(stderr, "veilkeep: %s\n", qPrintable(text));
        return;
    }
    std::fputs("veilkeep: the display cannot be opened; veilkeepctl works without one\n", stderr);
    std::_Exit(failed);
}

// pkexec makes root of a user whose list must stay that user's own.
bool isRunByPkexec() {
    return ::geteuid() == 0 && hasVariable("PKEXEC_UID");
}

} // namespace

int main(int argc, char** argv) {
    const auto arguments = std::span<char* const>(argv, static_cast<std::size_t>(argc)).subspan(argc > 0);
    if (isAsking(argc, argv)) {
        Translations translations;
        const auto makePresenter = [] { return std::make_unique<AlertWindows>([] { return nullptr; }); };
        return runAsk(argc, argv,
                      {.makePresenter = makePresenter, .prepare = [&] { translations.install(); }});
    }
    const auto parsed = StartOptions::parse(arguments);
    if (const auto* mistake = std::get_if<std::string>(&parsed)) {
        std::fprintf(stderr, "veilkeep: %s\nTry 'veilkeep --help'.\n", mistake->c_str());
        return wrongUsage;
    }
    auto options = std::get<StartOptions>(parsed);
    switch (options.mode) {
    case StartOptions::Mode::Version:
        return print("veilkeep " VEILKEEP_VERSION "\n");
    case StartOptions::Mode::Help:
        return print(StartOptions::helpText());
    case StartOptions::Mode::SelfTest:
        return selfTest(argv);
    case StartOptions::Mode::Hide:
    case StartOptions::Mode::Normal:
        break;
    }
    if (isRunByPkexec()) {
        std::fputs("veilkeep: this program does not run under pkexec; please start it as yourself\n", stderr);
        return refused;
    }
    if (!hasDisplay()) {
        std::fputs("veilkeep: there is no display; veilkeepctl works without one\n", stderr);
        return failed;
    }
    const ProcessNote note(OwnPlaces::current().stateDirectory);
    reportWhatEndsTheProgram();
    if (options.mode == StartOptions::Mode::Hide)
        return runHide(argv, options.toOpen);
    const LinuxProcesses processes;
    options.isRelaunch = Relaunching::waitForFormerProcess(processes);
    options.byLogin |= !options.isRelaunch && processes.wasLaunchedAtLogin();
    ::unsetenv("DESKTOP_AUTOSTART_ID"); // is this process' alone
    options.activationToken = inheritedActivationToken();
    int noArguments = 1; // Qt would take some for its own
    const QtMessageHandler usual = qInstallMessageHandler(tellWhileOpening);
    ADApp application(noArguments, argv, options);
    qInstallMessageHandler(usual);
    return application.run();
}
