#pragma once

#include <QObject>

class QDialog;

namespace veilkeep {

// Gives the keyboard back to the window below when a dialog that had it closes: not every window manager, and
// no bare display, does. A child of the dialog.
class KeyboardReturn : public QObject {
public:
    explicit KeyboardReturn(QDialog& dialog);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QDialog& m_dialog;
    bool m_hasKeyboard = false;
};

} // namespace veilkeep
