#include "widgets/dialogs/ModalRun.h"

#include "platform/EventLoop.h"
#include "widgets/dialogs/KeyboardReturn.h"
#include "widgets/dialogs/windowPlacement.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QEventLoop>
#include <QPointer>

namespace veilkeep {
namespace {

class EndWhenHidden : public QObject {
public:
    explicit EndWhenHidden(QEventLoop& loop) : m_loop(loop) {}

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Hide && !event->spontaneous())
            m_loop.quit();
        return QObject::eventFilter(watched, event);
    }

private:
    QEventLoop& m_loop;
};

} // namespace

bool runModal(QDialog& dialog) {
    const QPointer<QDialog> alive(&dialog);
    QEventLoop loop;
    EndWhenHidden end(loop);
    dialog.installEventFilter(&end);
    QObject::connect(&dialog, &QObject::destroyed, &loop, &QEventLoop::quit);
    new KeyboardReturn(dialog);
    placeWindow(dialog);
    dialog.show();
    wakeEventLoop();
    if (alive && dialog.isVisible())
        loop.exec(QEventLoop::DialogExec);
    return !alive.isNull();
}

void closePopups() {
    for (QWidget* popup = QApplication::activePopupWidget(); popup;
         popup = QApplication::activePopupWidget()) {
        popup->close();
        if (QApplication::activePopupWidget() == popup)
            return; // it does not want to
    }
}

} // namespace veilkeep
