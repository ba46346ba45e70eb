#pragma once

#include "groups/GroupEditView.h"

#include <QDialog>

#include <vector>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLineEdit;
class QPushButton;
class QStackedWidget;

namespace veilkeep {

class ImageWell;
class MessageBar;

// The sheet's window, for one editing. It forwards what the user does to the controller. Made by
// GroupEditWindow; main thread.
class GroupEditSheet : public QDialog {
    Q_OBJECT

public:
    GroupEditSheet(GroupEditController& controller, QWidget* parent);

    void showTab(GroupEditView::Tab tab);
    void tell(const QString& line);
    void reject() override; // from the message that a name is taken back to the form

    QLineEdit& groupNameField() { return *m_groupNameField; }
    ImageWell& groupIcon() { return *m_groupIcon; }
    QComboBox& popUpGroupIcons() { return *m_popUpGroupIcons; }
    QCheckBox& autoHideBox() { return *m_autoHideBox; }

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QWidget* makeForm();
    QWidget* makeIconRow();
    QWidget* makeButtons();
    QWidget* makeTakenMessage();
    void configureGroupIconsMenu();
    void fit();

    GroupEditController& m_controller;
    QLineEdit* m_groupNameField;
    ImageWell* m_groupIcon;
    QComboBox* m_popUpGroupIcons;
    QCheckBox* m_autoHideBox;
    MessageBar* m_line;
    QPushButton* m_ok = nullptr;
    QPushButton* m_back = nullptr;
    QWidget* m_message = nullptr;
    std::vector<QWidget*> m_tabOrder; // of the last controls
    QStackedWidget* m_editWindowTabView;
};

} // namespace veilkeep
