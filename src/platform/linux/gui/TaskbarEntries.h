#pragma once

#include <QGuiApplication>
#include <QObject>

#include <functional>

class QWindow;

namespace veilkeep {

// Keeps the program's windows out of the taskbar where they are not wanted there. X11 alone: a window that is
// about to be shown says so itself, for one that is on the screen the window manager is asked. Wayland has no
// word for it, windows keep their entries there. Main thread.
class TaskbarEntries : public QObject {
    Q_OBJECT

public:
    TaskbarEntries(QGuiApplication& application, std::function<bool()> areWanted);

    void update(); // what is wanted may have changed

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const std::function<bool()> m_areWanted;
};

} // namespace veilkeep
