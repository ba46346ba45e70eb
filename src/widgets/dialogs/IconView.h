#pragma once

#include <QIcon>
#include <QWidget>

namespace veilkeep {

// An icon, drawn for the screen that it is on; decoration only.
class IconView : public QWidget {
    Q_OBJECT

public:
    IconView(const QIcon& icon, int extent, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QIcon m_icon;
};

} // namespace veilkeep
