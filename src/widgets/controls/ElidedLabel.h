#pragma once

#include <QLabel>

namespace veilkeep {

// One line of plain text that gives up its middle where there is no room; read out whole. Main thread.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace veilkeep
