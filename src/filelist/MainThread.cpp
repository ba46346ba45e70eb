#include "filelist/MainThread.h"

#include "platform/EventLoop.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QMetaObject>
#include <QThread>

#include <utility>

namespace veilkeep {

bool MainThread::isCurrent() {
    return QThread::currentThread() == QCoreApplication::instance()->thread();
}

void MainThread::post(QObject* context, std::function<void()> call) {
    QMetaObject::invokeMethod(context, std::move(call), Qt::QueuedConnection);
}

void MainThread::runAndWait(const std::function<void()>& call) {
    if (isCurrent())
        return call();
    QMetaObject::invokeMethod(QCoreApplication::instance(), call, Qt::BlockingQueuedConnection);
}

void MainThread::runUntil(const std::function<bool()>& condition) {
    wakeEventLoop();
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
}

} // namespace veilkeep
