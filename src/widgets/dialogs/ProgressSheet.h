#pragma once

#include "alerts/ProgressView.h"
#include "widgets/dialogs/MainWindowAnswer.h"

#include <QPointer>
#include <QString>
#include <QTimer>

#include <chrono>

namespace veilkeep {

class ProgressPanel;

// Shows progress as a sheet on the main window, and nothing where that cannot be seen. The sheet comes with
// a turn of the event loop once the work has taken a moment, and goes when the input that came
// for the main window meanwhile has been turned away. Main thread.
class ProgressSheet : public ProgressView {
public:
    explicit ProgressSheet(MainWindowAnswer mainWindow);
    ~ProgressSheet() override;
    ProgressSheet(const ProgressSheet&) = delete;
    ProgressSheet& operator=(const ProgressSheet&) = delete;

    void begin(const QString& stage, bool canBeCancelled) override;
    void setSubStage(const QString& subStage) override;
    void setDone(std::size_t done, std::size_t total) override;
    void end() override;

    // Where it can be cancelled, asking takes the input of the sheet's button.
    bool isCancelled() const override;

    // For who works on this thread: paints, and takes no input but that of the sheet's button.
    void turnEventLoop();

private:
    using Clock = std::chrono::steady_clock;

    void show();
    void hide();
    void update();
    void takeInput() const;

    MainWindowAnswer m_mainWindow;
    QPointer<ProgressPanel> m_panel; // a child of the main window
    bool m_isOpen = false;
    bool m_hasWindow = false; // since begin()
    QString m_subStage;
    std::size_t m_done = 0, m_total = 0;
    Clock::time_point m_updated;
    mutable Clock::time_point m_inputTaken;
    QTimer m_showing, m_updating, m_hiding; // each fires once
};

} // namespace veilkeep
