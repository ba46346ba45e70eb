#pragma once

#include <QLabel>

namespace veilkeep {

// One line of plain text that gives up its middle where there is no room.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override { return minimumSizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace veilkeep
