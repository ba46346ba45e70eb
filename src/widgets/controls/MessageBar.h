#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

namespace veilkeep {

// A lasting message within a window, with a button that does something about it and perhaps one that puts it
// away. Main thread.
class MessageBar : public QFrame {
    Q_OBJECT

public:
    enum class Kind { Information, Warning };

    explicit MessageBar(Kind kind, QWidget* parent = nullptr);

    void setText(const QString& text);         // plain; read out when it appears
    void setActionText(const QString& action); // empty: no such button
    void setDismissible(bool isDismissible);

signals:
    void actionTriggered();
    void dismissed();

private:
    QLabel* m_text;
    QPushButton* m_action;
    QPushButton* m_dismiss;
};

} // namespace veilkeep
