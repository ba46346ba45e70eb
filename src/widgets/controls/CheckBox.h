#pragma once

#include <QCheckBox>

namespace veilkeep {

// One whose box is seen on a dark ground too, where styles give it an edge that is darker still. Main thread.
class CheckBox : public QCheckBox {
public:
    using QCheckBox::QCheckBox;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace veilkeep
