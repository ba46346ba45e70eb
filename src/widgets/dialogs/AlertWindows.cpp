#include "widgets/dialogs/AlertWindows.h"

#include "filelist/MainThread.h"
#include "platform/EventLoop.h"
#include "widgets/dialogs/AlertWindow.h"
#include "widgets/dialogs/KeyboardReturn.h"
#include "widgets/dialogs/ModalRun.h"
#include "widgets/dialogs/windowPlacement.h"

#include <QApplication>

#include <utility>

namespace veilkeep {
namespace {

// Where the user is: what asked, since something else would come to the front with the main window.
QWidget* windowInUse() {
    QWidget* const modal = QApplication::activeModalWidget();
    return modal ? modal : QApplication::activeWindow();
}

} // namespace

AlertWindows::AlertWindows(MainWindowAnswer mainWindow) : m_mainWindow(std::move(mainWindow)) {}

AlertWindows::~AlertWindows() {
    for (const auto& window : std::exchange(m_open, {}))
        if (window)
            window->reject();
}

AlertAnswer AlertWindows::run(const Alert& alert) {
    AlertAnswer answer;
    MainThread::runAndWait([&] { answer = runOnMainThread(alert); });
    return answer;
}

AlertAnswer AlertWindows::runOnMainThread(const Alert& alert) {
    const AlertAnswer cancelled{alert.codeWhenCancelled()};
    if (!alert.beginShowing())
        return cancelled;
    AlertWindow* const window = &makeWindow(alert, windowInUse());
    if (!runModal(*window))
        return cancelled;
    const AlertAnswer answer = window->isVisible() ? cancelled : window->answer();
    delete window;
    return answer;
}

void AlertWindows::begin(const Alert& alert) {
    if (MainThread::isCurrent())
        return show(alert);
    MainThread::post(&m_mainThread, [this, alert] { show(alert); });
}

void AlertWindows::show(const Alert& alert) {
    if (!alert.beginShowing())
        return;
    AlertWindow& window = makeWindow(alert, nullptr); // stays when what is in front closes
    window.setAttribute(Qt::WA_DeleteOnClose);
    new KeyboardReturn(window);
    placeWindow(window);
    window.show();
}

AlertWindow& AlertWindows::makeWindow(const Alert& alert, QWidget* inFront) {
    QWidget* const mainWindow = visibleWindow(m_mainWindow);
    const bool isSheet = alert.window == Alert::Window::Main && mainWindow;
    auto* const window = new AlertWindow(alert, isSheet || !inFront ? mainWindow : inFront);
    window->setWindowModality(isSheet ? Qt::WindowModal : Qt::ApplicationModal);
    std::erase_if(m_open, [](const auto& each) { return each.isNull(); });
    m_open.emplace_back(window);
    return *window;
}

void AlertWindows::cancelOpen() {
    closePopups();
    const auto open = m_open; // the list changes meanwhile
    for (const auto& window : open)
        if (window)
            window->reject();
}

void AlertWindows::serveOthers() {
    wakeEventLoop();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace veilkeep
