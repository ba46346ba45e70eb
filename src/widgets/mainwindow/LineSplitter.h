#pragma once

#include <QPointer>
#include <QSplitter>

namespace veilkeep {

// Panes side by side with a thin line between them. F8 leads from line to line, and from the last one back to
// where the focus was before; arrows, Home and End move the line that has it. Main thread.
class LineSplitter : public QSplitter {
    Q_OBJECT

public:
    // Of the pane at the outer side of a line.
    struct PaneWidth {
        int least = 0;
        int now = 0;
        int most = 0;
    };

    explicit LineSplitter(QWidget* parent = nullptr);

    void orderPanes(); // for screen readers, which read children as they are stacked
    PaneWidth paneWidth(int line) const;
    void setPaneWidth(int line, int width);
    void moveLine(int line, int by); // towards the end of the row of panes
    void leaveLines();

protected:
    QSplitterHandle* createHandle() override;

private:
    bool isBeforeLine(int line) const { return 2 * line < count(); } // where its outer pane lies
    int placeOf(int line) const;
    void focusNextLine();

    QPointer<QWidget> m_focusedBefore;
};

} // namespace veilkeep
