#pragma once

#include <QTextEdit>

namespace veilkeep {

// Text to be read and selected, plain whatever it contains. It is as high as the text at its width, and
// scrolls beyond the most lines that it may have.
class TextBlock : public QTextEdit {
    Q_OBJECT

public:
    TextBlock(const QString& text, int mostLines, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    int textHeight(int width) const;
    void scrollOnlyWhereNeeded();

    int m_mostLines;
    mutable int m_measuredWidth = -1;
    mutable int m_measuredHeight = 0;
};

} // namespace veilkeep
