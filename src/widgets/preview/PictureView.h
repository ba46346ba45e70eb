#pragma once

#include <QImage>
#include <QPixmap>
#include <QWidget>

namespace veilkeep {

// One image, scaled down to fit, never up; sharp at any scale. Main thread.
class PictureView : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    void setImage(const QImage& image); // its pixels are those of the screen
    QRect imageRect() const;            // where it is drawn

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage m_image;
    QPixmap m_scaled; // for the size drawn last
};

} // namespace veilkeep
