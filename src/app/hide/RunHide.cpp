#include "app/hide/RunHide.h"

#include "app/Translations.h"
#include "app/ask/FrontWindows.h"
#include "app/hide/HideCaller.h"
#include "core/filesystem/ItemPath.h"
#include "core/log/Log.h"
#include "core/storage/UserDefaults.h"
#include "filelist/Texts.h"
#include "format/ErrorText.h"
#include "platform/EventLoop.h"
#include "platform/linux/QuitSignals.h"
#include "requests/RequestRules.h"
#include "widgets/dialogs/AlertWindows.h"
#include "widgets/images/ProgramImages.h"
#include "wiring/RequestRoute.h"

#include <QApplication>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>

namespace veilkeep {
namespace {

// Tells at once of what is no item of this machine, and leaves it out.
Request requestFor(const OpenRequest& items, RequestCaller& caller) {
    Request request{QStringLiteral("hide"), {}, {}};
    request.options.insert(QLatin1String(requestOption::interactive), true);
    request.options.insert(QLatin1String(requestOption::fromMenu), true);
    for (const QString& link : items.links)
        caller.itemFailed(
            link.toStdString(),
            QCoreApplication::translate("RunHide", "Only files and folders of this computer can be hidden."));
    for (const std::string& item : items.paths) {
        const Result<std::string> path = absoluteItemPath(item);
        if (path)
            request.paths.push_back(*path);
        else
            caller.itemFailed(item, path.error().systemError == ENOENT
                                        ? workerErrorText(WorkerError::NotFound)
                                        : errorReason(path.error()));
    }
    return request;
}

// Whoever notices it first has to say it, for it takes the password with it.
void tellOfDamagedSettings(UserDefaults& defaults, HideCaller& caller) {
    const auto text = [](const char* source) {
        return QCoreApplication::translate("veilkeep::ADApp", source); // whose words these are
    };
    const auto tell = [&caller, text](const std::string& kept) {
        caller.message(text("The settings were damaged and begin anew."));
        caller.message(text("What they were is kept in %1. Where a password was set, please set it again.")
                           .arg(shownPath(kept)));
    };
    defaults.setDamagedWhileRunning(tell);
    const auto kept = defaults.keepDamagedAside();
    if (!kept) {
        logError("The damaged settings cannot be put aside", kept.error());
        caller.message(text("The settings are damaged and count as not set."));
    } else if (*kept) {
        tell(**kept);
    }
}

// A session that ends is noticed while a worker is waited for.
void turnEventLoop() {
    wakeEventLoop();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

RequestStatus hide(const OpenRequest& items) {
    AlertWindows windows([] { return nullptr; });
    UserDefaults defaults;
    Alerts alerts(windows, defaults);
    HideCaller caller(alerts);
    QuitSignals quitSignals;
    QObject::connect(&quitSignals, &QuitSignals::quitAsked, &quitSignals, [&] { caller.cancel(); });
    quitSignals.start();

    tellOfDamagedSettings(defaults, caller);
    const Request request = requestFor(items, caller);
    const bool isWhole = items.links.isEmpty() && request.paths.size() == items.paths.size();
    RequestStatus status = isWhole ? RequestStatus::AllWell : RequestStatus::SomeFailed;
    if (!request.paths.empty()) {
        RequestRoute route(caller, defaults,
                           {.list = {.tick = turnEventLoop, .presenter = &windows, .mayAsk = true}});
        status = std::max(status, route.run(request));
    }
    if (items.isEmpty())
        caller.message(QCoreApplication::translate("RunHide", "No item was chosen."));
    caller.tellTroubles();
    return status;
}

} // namespace

int runHide(char** argv, const OpenRequest& items) {
    ::unsetenv("SESSION_MANAGER"); // a session that is restored has nothing to hide
    QGuiApplication::setDesktopFileName(QStringLiteral("com.ostrel.Veilkeep"));
    int noArguments = 1; // Qt would take some for its own
    QApplication application(noArguments, argv);
    Translations translations;
    translations.install();
    QApplication::setApplicationName(QStringLiteral("Veilkeep"));
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(programImage::named(QStringLiteral("com.ostrel.Veilkeep")));
    application.installEventFilter(new FrontWindows(&application));
    return static_cast<int>(hide(items));
}

} // namespace veilkeep
