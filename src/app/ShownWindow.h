#pragma once

#include "session/MainWindowController.h"
#include "widgets/mainwindow/VeilkeepWindow.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace veilkeep {

// The main window, made when it is shown for the first time. Owned by the application; main thread.
class ShownWindow : public QObject, public MainWindow {
    Q_OBJECT

public:
    using Make = std::function<std::unique_ptr<VeilkeepWindow>()>;

    // Set once, before the first show().
    void setMake(Make make) { m_make = std::move(make); }

    bool isVisible() const override;
    void show() override;
    void close() override;
    void activate(bool ignoringOthers) override;

    // What the desktop wants to see before it lets the window come to the front the next time.
    void setActivationToken(const QString& token) { m_token = token; }

    VeilkeepWindow* window() { return m_window.get(); } // null before the first show()
    void destroy() { m_window.reset(); }
    QWidget* visibleWindow() { return isVisible() ? m_window.get() : nullptr; } // for sheets

signals:
    void made(veilkeep::VeilkeepWindow& window);
    void shown();

private:
    Make m_make;
    std::unique_ptr<VeilkeepWindow> m_window;
    QString m_token;
};

} // namespace veilkeep
