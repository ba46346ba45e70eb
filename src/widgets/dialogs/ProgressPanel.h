#pragma once

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;

namespace veilkeep {

class ElidedLabel;

// The progress sheet's window. It stays until it is hidden; Cancel, Escape and closing it only ask for the
// end, where that is offered. Made by ProgressSheet; main thread.
class ProgressPanel : public QDialog {
    Q_OBJECT

public:
    explicit ProgressPanel(QWidget* mainWindow);

    void begin(const QString& stage, bool canBeCancelled);
    void setSubStage(const QString& subStage);
    void setDone(std::size_t done, std::size_t total);

    bool canBeCancelled() const;
    bool isCancelled() const { return m_isCancelled; }

    // Delivers the input that waits, to this window alone: its button works while its owner works on this
    // thread. What was meant for other windows is dropped.
    void takeInput();

    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QLabel* m_stage;
    ElidedLabel* m_subStage;
    QProgressBar* m_bar;
    QLabel* m_count;
    QPushButton* m_cancel;
    bool m_isCancelled = false;
    bool m_isTakingInput = false;
};

} // namespace veilkeep
