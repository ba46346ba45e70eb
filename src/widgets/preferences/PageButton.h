#pragma once

#include <QToolButton>

namespace veilkeep {

// The button of a page in the toolbar: its image above its name, marked while the page is chosen. A tool
// button for screen readers. Main thread.
class PageButton : public QToolButton {
    Q_OBJECT

public:
    PageButton(const QString& title, const QIcon& icon, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
};

} // namespace veilkeep
