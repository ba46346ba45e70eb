#include "widgets/grouplist/GroupPanel.h"

#include "groups/AutoHideVisibleValue.h"
#include "widgets/controls/CheckBox.h"
#include "widgets/controls/OnOffSwitch.h"
#include "widgets/controls/RowControls.h"
#include "widgets/grouplist/GroupsView.h"
#include "widgets/images/ProgramImages.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>

namespace veilkeep {

GroupPanel::GroupPanel(GroupViewController& groups, FilesViewController& files, QWidget* parent)
    : QWidget(parent),
      m_groups(groups),
      m_files(files),
      m_view(new GroupsView(groups, files, this)),
      m_controls(makeControls()),
      m_bar(makeBar()) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_controls);
    layout->addWidget(m_bar);
    setFocusProxy(m_view);
    connect(m_view, &GroupsView::rightKeyPressed, this, &GroupPanel::rightKeyPressed);
    connect(&groups, &GroupViewController::groupsChanged, this, &GroupPanel::showCurrentGroup);
    connect(&groups, &GroupViewController::currentGroupChanged, this, &GroupPanel::showCurrentGroup);
    connect(&files.hideOperations(), &HideOperations::batchRunningChanged, this, [this](bool isRunning) {
        m_isBatchRunning = isRunning;
        showSwitch();
    });
    showCurrentGroup();
}

GroupPanel::~GroupPanel() = default;

void GroupPanel::focusGroups() {
    m_view->setFocus(Qt::OtherFocusReason);
}

bool GroupPanel::isEditingOffered() const {
    return m_view->isEditingOffered();
}

void GroupPanel::setEditingOffered(bool isOffered) {
    m_view->setEditingOffered(isOffered);
    m_edit->setVisible(isOffered);
}

QWidget* GroupPanel::makeControls() {
    auto* const controls = new QWidget(this);
    m_switch = new OnOffSwitch(controls);
    m_switch->setAccessibleName(tr("Hide the group"));
    m_state = new QLabel(controls);
    m_autoHide = new CheckBox(tr("AutoHide"), controls);
    m_autoHide->setToolTip(tr("Hide this group whenever you leave the computer"));
    auto* const layout = new QHBoxLayout(controls);
    QSizePolicy always = m_autoHide->sizePolicy();
    always.setRetainSizeWhenHidden(true); // or the window would grow with another group
    m_autoHide->setSizePolicy(always);
    layout->setContentsMargins(9, 7, 12, 7);
    layout->addWidget(m_switch);
    layout->addWidget(m_state);
    layout->addStretch();
    layout->addWidget(m_autoHide);
    connect(m_switch, &OnOffSwitch::switched, &m_groups, &GroupViewController::switchOnOff);
    connect(m_autoHide, &QCheckBox::toggled, &m_groups, &GroupViewController::autoHideChanged);
    return controls;
}

QWidget* GroupPanel::makeBar() {
    auto* const bar = new QWidget(this);
    auto* const layout = new QHBoxLayout(bar);
    layout->setContentsMargins(6, 5, 6, 5);
    layout->setSpacing(2);
    QToolButton* const add = makeButton(QStringLiteral("add"), tr("Add a group"), *layout);
    m_remove = makeButton(QStringLiteral("remove"), tr("Remove the group"), *layout);
    m_edit = makeButton(QStringLiteral("edit"), tr("Edit the group"), *layout);
    m_edit->hide();
    layout->addStretch();
    connect(add, &QToolButton::clicked, this, &GroupPanel::addGroup);
    connect(m_remove, &QToolButton::clicked, &m_groups, &GroupViewController::removeSelectedRows);
    connect(m_edit, &QToolButton::clicked, &m_groups,
            [this] { m_groups.editGroup(m_groups.currentGroup()); });
    return bar;
}

QToolButton* GroupPanel::makeButton(const QString& image, const QString& text, QBoxLayout& into) {
    auto* const button = new QToolButton(this);
    button->setIcon(programImage::symbol(image));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setAccessibleName(text);
    button->setToolTip(text);
    into.addWidget(button);
    return button;
}

void GroupPanel::showCurrentGroup() {
    const ListedGroup group = m_groups.currentGroup();
    m_controls->setEnabled(group != nullptr);
    m_remove->setEnabled(group != nullptr);
    m_edit->setEnabled(group && group->canBeRemoved());
    m_autoHide->setHidden(AutoHideVisibleValue::transformedValue(m_groups.currentGroupName()));
    const QSignalBlocker isNotTheUser(m_autoHide);
    m_autoHide->setChecked(group && group->autoHide().value_or(false));
    showSwitch();
}

// While a batch runs it stands as the user left it.
void GroupPanel::showSwitch() {
    if (m_isBatchRunning)
        return;
    const ListedGroup group = m_groups.currentGroup();
    const bool isHidden = group && group->state() != 0;
    m_switch->setValue(isHidden ? OnOffSwitch::On : OnOffSwitch::Off);
    m_state->setText(isHidden ? tr("Hidden") : tr("Shown"));
}

void GroupPanel::addGroup() {
    m_groups.addGroup();
    m_view->scrollToBottom();
}

void GroupPanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QPalette colors = palette();
    colors.setColor(QPalette::Base, colors.color(QPalette::Window));
    colors.setColor(QPalette::Text, colors.color(QPalette::WindowText));
    for (const QWidget* part : {m_controls, m_bar})
        painter.fillRect(part->x(), part->y(), part->width(), 1, separatorColor(colors));
}

} // namespace veilkeep
