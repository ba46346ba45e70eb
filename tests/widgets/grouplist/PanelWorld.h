#pragma once

#include "tests/groups/GroupWorld.h"
#include "tests/support/gui/RealInput.h"
#include "widgets/grouplist/GroupPanel.h"
#include "widgets/grouplist/GroupsView.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMenu>

namespace veilkeep::test {

struct PanelScratch { // made before what works in it
    const ScratchTree tree;
};

// The panel in a window on the screen, with the real groups and the real worker.
struct PanelWorld : PanelScratch, GroupWorld {
    PanelWorld() {
        started();
        panel = std::make_unique<GroupPanel>(groups, *list.list);
        panel->move(100, 100);
        panel->resize(260, 500);
        view = panel->findChild<GroupsView*>();
        EXPECT_TRUE(showAndActivate(*panel));
        panel->focusGroups();
    }

    QPoint middleOf(int row) const { return view->visualRect(view->model()->index(row, 0)).center(); }
    QPoint onScreen(int row, int below = 0) const {
        return view->viewport()->mapToGlobal(middleOf(row) + QPoint(0, below));
    }
    void clickRow(int row, Qt::MouseButton button = Qt::LeftButton) {
        realInput::click(*view->viewport(), middleOf(row), button);
    }
    int selectedRow() const {
        const auto rows = view->selectionModel()->selectedRows();
        return rows.size() == 1 ? rows.front().row() : -1;
    }
    // The open menu; null where none is.
    static QMenu* menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    static QAction* menuItem(int tag) {
        for (QAction* const action : menu() ? menu()->actions() : QList<QAction*>())
            if (action->data().isValid() && action->data().toInt() == tag)
                return action;
        return nullptr;
    }
    static void clickMenuItem(QAction* item) {
        realInput::click(*menu(), menu()->actionGeometry(item).center());
    }

    std::unique_ptr<GroupPanel> panel;
    GroupsView* view = nullptr;
};

} // namespace veilkeep::test
