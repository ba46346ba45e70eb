#pragma once

#include "groups/GroupViewController.h"

#include <QWidget>

class QBoxLayout;
class QCheckBox;
class QLabel;
class QToolButton;

namespace veilkeep {

class GroupsView;
class OnOffSwitch;

// The group list with the switch and the AutoHide box of the selected group, and the buttons that add, remove
// and edit groups. Main thread.
class GroupPanel : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool editingOffered READ isEditingOffered WRITE setEditingOffered)

public:
    GroupPanel(GroupViewController& groups, FilesViewController& files, QWidget* parent = nullptr);
    ~GroupPanel() override;

    void focusGroups();

    // Whether there is a window that edits groups; without one nothing leads to it.
    bool isEditingOffered() const;
    void setEditingOffered(bool isOffered);

signals:
    void rightKeyPressed(); // the focus is to go to the files table

protected:
    void paintEvent(QPaintEvent* event) override; // lines between the parts

private:
    QWidget* makeControls();
    QWidget* makeBar();
    QToolButton* makeButton(const QString& image, const QString& text, QBoxLayout& into);
    void showCurrentGroup();
    void showSwitch();
    void addGroup();

    GroupViewController& m_groups;
    FilesViewController& m_files;
    GroupsView* m_view = nullptr;
    OnOffSwitch* m_switch = nullptr;
    QLabel* m_state = nullptr;
    QCheckBox* m_autoHide = nullptr;
    QToolButton* m_remove = nullptr;
    QToolButton* m_edit = nullptr;
    QWidget* m_controls = nullptr;
    QWidget* m_bar = nullptr;
    bool m_isBatchRunning = false;
};

} // namespace veilkeep
