#pragma once

#include "groups/GroupViewController.h"

#include <QWidget>

namespace veilkeep {

class GroupsView;

// The group list with the switch and the AutoHide box of the selected group, and the buttons that add, remove
// and edit groups. Main thread.
class GroupPanel : public QWidget {
    Q_OBJECT

public:
    GroupPanel(GroupViewController& groups, FilesViewController& files, QWidget* parent = nullptr);
    ~GroupPanel() override;

    void focusGroups();

signals:
    void rightKeyPressed(); // the focus is to go to the files table

private:
    GroupViewController& m_groups;
    FilesViewController& m_files;
    GroupsView* m_view = nullptr;
};

} // namespace veilkeep
