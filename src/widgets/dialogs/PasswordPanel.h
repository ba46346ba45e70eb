#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

namespace veilkeep {

class WindowShake;

// The prompt's window, for one question. Made by PasswordWindow; main thread.
class PasswordPanel : public QDialog {
    Q_OBJECT

public:
    PasswordPanel(const QString& title, const QString& line);

    void showWrongEntries(int count);
    void finish(); // says neither entered() nor cancelled()
    void reject() override;

signals:
    void entered(const QString& password);
    void cancelled();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QLineEdit* makeField(const QString& line);
    QWidget* makeWarning();
    QWidget* makeButtons();
    void layOut(QLabel* lableField);
    void fit();
    void setCapsLock(bool isOn);

    QWidget* m_content;
    QLineEdit* m_passwordField;
    QLabel* m_wrongPasswordWorningField = nullptr;
    QLabel* m_tryNumberField = nullptr;
    QLabel* m_tryNumberAppendixField = nullptr;
    QWidget* m_warning;
    QLabel* m_capsLock = nullptr;
    QPushButton* m_ok = nullptr;
    QWidget* m_buttons;
    WindowShake* m_shake;
};

} // namespace veilkeep
