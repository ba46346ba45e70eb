#pragma once

#include <QSplitterHandle>

namespace veilkeep {

class LineSplitter;

// A line of a LineSplitter, and what screen readers know of it: how wide the pane at its outer side is. Owned
// by the splitter; main thread.
class SplitterLine : public QSplitterHandle {
    Q_OBJECT

public:
    explicit SplitterLine(LineSplitter& splitter);

    LineSplitter& lines() const { return m_lines; }
    int number() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void showFocus();

    LineSplitter& m_lines;
};

} // namespace veilkeep
