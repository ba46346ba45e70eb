#pragma once

#include "alerts/Alert.h"

#include <QDialog>

class QCheckBox;
class QDialogButtonBox;
class QVBoxLayout;

namespace veilkeep {

class ErrorTable;

// One alert. Return presses its first button while the keyboard is on no other, Escape and closing it the
// last. Made by AlertWindows; main thread.
class AlertWindow : public QDialog {
    Q_OBJECT

public:
    AlertWindow(const Alert& alert, QWidget* parent);

    AlertAnswer answer() const; // that of the last button until it is answered
    void reject() override;

    // Nothing is to be decided: one button alone.
    bool isDismissible() const { return m_alert.buttons.size() == 1; }

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void addTexts(QVBoxLayout& column);
    void addAccessoryViews(QVBoxLayout& column);
    void addButtons(QDialogButtonBox& box);
    QIcon styleIcon() const;

    Alert m_alert;
    int m_answer; // its code
    QCheckBox* m_suppress = nullptr;
    ErrorTable* m_errors = nullptr;
};

} // namespace veilkeep
