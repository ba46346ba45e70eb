#pragma once

#include "tests/support/gui/RealInput.h"

#include <gtest/gtest.h>

#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>

#include <functional>
#include <utility>

namespace veilkeep::test {

// Another window of the program from which is dragged what it was given.
class DragSource : public QWidget {
public:
    explicit DragSource(std::function<void(QMimeData&)> fill,
                        Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction)
        : m_fill(std::move(fill)), m_actions(actions) {
        setGeometry(600, 100, 100, 100);
    }
    Qt::DropAction taken = Qt::IgnoreAction;

protected:
    void mousePressEvent(QMouseEvent*) override {}
    void mouseMoveEvent(QMouseEvent*) override {
        auto* const drag = new QDrag(this);
        auto* const mime = new QMimeData;
        m_fill(*mime);
        drag->setMimeData(mime);
        taken = drag->exec(m_actions);
    }

private:
    std::function<void(QMimeData&)> m_fill;
    Qt::DropActions m_actions;
};

inline Qt::DropAction dragTo(const QPoint& onScreen, DragSource&& source) {
    EXPECT_TRUE(showAndActivate(source));
    realInput::drag(source.mapToGlobal(QPoint(50, 50)), onScreen);
    settle();
    return source.taken;
}

} // namespace veilkeep::test
