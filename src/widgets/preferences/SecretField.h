#pragma once

#include <QLineEdit>

namespace veilkeep {

// A field for a password, which tells whether Caps Lock is on as soon as a key says so. Main thread.
class SecretField : public QLineEdit {
    Q_OBJECT

public:
    explicit SecretField(QWidget* parent = nullptr);

signals:
    void capsLockNoticed(bool isOn);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace veilkeep
