#pragma once

#include <QTextEdit>

namespace veilkeep {

// Plain text that can be selected and copied, as high as it needs to be; long words are broken. Main thread.
class WrappedText : public QTextEdit {
    Q_OBJECT

public:
    explicit WrappedText(QWidget* parent = nullptr);

protected:
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};

} // namespace veilkeep
