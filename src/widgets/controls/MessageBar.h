#pragma once

#include <QFrame>

class QLabel;
class QPushButton;
class QToolButton;

namespace veilkeep {

// A lasting message within a window, with a button that does something about it and perhaps one that puts it
// away. Main thread.
class MessageBar : public QFrame {
    Q_OBJECT

public:
    enum class Kind { Information, Warning };

    explicit MessageBar(Kind kind, QWidget* parent = nullptr);

    QString text() const;
    void setText(const QString& text);         // plain; read out when it appears
    void setActionText(const QString& action); // empty: no such button
    void setDismissible(bool isDismissible);

signals:
    void actionTriggered();
    void dismissed(); // and hidden

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Kind m_kind;
    QLabel* m_icon; // its place
    QLabel* m_text;
    QPushButton* m_action;
    QToolButton* m_dismiss;
};

} // namespace veilkeep
