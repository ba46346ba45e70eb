#include "app/ask/RunAsk.h"

#include "app/ask/AskRequest.h"
#include "app/ask/Asker.h"
#include "app/ask/FrontWindows.h"
#include "app/ask/RecentsNotice.h"
#include "core/base/SystemCall.h"
#include "core/environment/Variables.h"
#include "core/storage/UserDefaults.h"
#include "platform/linux/DesktopTrash.h"
#include "platform/linux/QuitSignals.h"

#include <QApplication>
#include <QSocketNotifier>

#include <signal.h>
#include <unistd.h>

#include <string_view>

namespace veilkeep {
namespace {

enum Status { Answered = 0, NotAnswered = 1, Refused = 2 };

bool mayShowWindows() {
    return ::geteuid() != 0 && ::getuid() != 0 && !variableIsSet("PKEXEC_UID") &&
           !variableIs("VEILKEEP_NOBODY_THERE", "1") &&
           (variableIsSet("DISPLAY") || variableIsSet("WAYLAND_DISPLAY"));
}

bool tell(const QString& answer) {
    const QByteArray line = answer.toUtf8() + '\n';
    return retryOnInterrupt([&] {
               return ::write(STDOUT_FILENO, line.constData(), static_cast<std::size_t>(line.size()));
           }) == line.size();
}

// Whoever asked keeps its end open as long as the answer is wanted.
bool inputHasEnded() {
    char bytes[64];
    const ssize_t count = retryOnInterrupt([&] { return ::read(STDIN_FILENO, bytes, sizeof bytes); });
    return count <= 0;
}

int answerAndTell(const AskRequest& request, AlertPresenter& presenter) {
    UserDefaults defaults; // no alert here stores anything
    Alerts alerts(presenter, defaults);
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    const auto giveUp = [&] {
        input.setEnabled(false);
        alerts.setNobodyThere(true);
    };
    QObject::connect(&input, &QSocketNotifier::activated, &input, [&] {
        if (inputHasEnded())
            giveUp();
    });
    QuitSignals quitSignals;
    QObject::connect(&quitSignals, &QuitSignals::quitAsked, &input, giveUp);
    quitSignals.start();

    DesktopTrash trash;
    const auto answer = Asker(alerts, trash).answerTo(request);
    input.setEnabled(false);
    if (!answer)
        return NotAnswered;
    const bool isTold = tell(*answer);
    if (request.kind == AskRequest::Kind::Recents) {
        RecentsNotice notice;
        QObject::connect(&quitSignals, &QuitSignals::quitAsked, &notice, &RecentsNotice::quit);
        if (notice.post(*answer))
            notice.stay();
    }
    return isTold ? Answered : NotAnswered;
}

} // namespace

bool isAsking(int argc, char** argv) {
    return argc > 1 && std::string_view(argv[1]) == "--ask";
}

int runAsk(int argc, char** argv, const AskParts& parts) {
    if (argc != 3 || !isAsking(argc, argv) || !mayShowWindows())
        return Refused;
    ::signal(SIGPIPE, SIG_IGN);
    const auto request = AskRequest::read(argv[2], STDIN_FILENO);
    if (!request)
        return Refused;
    ::unsetenv("SESSION_MANAGER"); // a session that is restored has nothing to ask
    QGuiApplication::setDesktopFileName(QStringLiteral("com.ostrel.Veilkeep"));
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Veilkeep"));
    QApplication::setQuitOnLastWindowClosed(false);
    application.installEventFilter(new FrontWindows(&application));
    parts.prepare();
    const std::unique_ptr<AlertPresenter> presenter = parts.makePresenter();
    return answerAndTell(*request, *presenter);
}

} // namespace veilkeep
