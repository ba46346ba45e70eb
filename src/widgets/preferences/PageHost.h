#pragma once

#include <QWidget>

#include <vector>

namespace veilkeep {

// Shows one of its pages, from the top on and as high as it needs to be, however high the host is at the
// moment. Main thread.
class PageHost : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    void addPage(QWidget& page); // hidden; becomes the host's
    void showPage(QWidget& page);

    int widthNeeded() const;  // of the widest page
    int heightNeeded() const; // of the one that is shown, at the host's width

signals:
    void neededSizeChanged();

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void place();

    std::vector<QWidget*> m_pages;
    QWidget* m_shown = nullptr;
};

} // namespace veilkeep
