#include "filelist/MainThread.h"

#include <QAbstractEventDispatcher>
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
    // What was posted before the event that is being delivered would not be looked at again.
    QAbstractEventDispatcher::instance()->wakeUp();
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
}

} // namespace veilkeep
