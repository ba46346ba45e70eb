#pragma once

#include <QSplitter>

namespace veilkeep {

// Panes side by side with a thin line between them. Main thread.
class LineSplitter : public QSplitter {
    Q_OBJECT

public:
    explicit LineSplitter(QWidget* parent = nullptr);

    void orderPanes(); // for screen readers, which read children as they are stacked

protected:
    QSplitterHandle* createHandle() override;
};

} // namespace veilkeep
