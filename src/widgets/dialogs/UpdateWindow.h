#pragma once

#include "widgets/dialogs/MainWindowAnswer.h"

#include <QPointer>
#include <QString>

#include <functional>

class QDialog;

namespace veilkeep {

// Shows that updates are looked for, and then what came of it. One at a time. Main thread.
class UpdateWindow {
public:
    // Belongs to the main window where that can be seen; cancel() is called when it closes.
    UpdateWindow(MainWindowAnswer mainWindow, std::function<void()> cancel);
    ~UpdateWindow();
    UpdateWindow(const UpdateWindow&) = delete;
    UpdateWindow& operator=(const UpdateWindow&) = delete;

    void show(); // looking; one that is open comes to the front
    void showAnswer(const QString& title, const QString& message); // nothing where it was closed
    void close();

private:
    MainWindowAnswer m_mainWindow;
    std::function<void()> m_cancel;
    QPointer<QDialog> m_window;
};

} // namespace veilkeep
