#include "widgets/groupedit/GroupEditSheet.h"

#include "filelist/Texts.h"
#include "groups/EnteredName.h"
#include "groups/GroupEditController.h"
#include "widgets/controls/CheckBox.h"
#include "widgets/controls/MessageBar.h"
#include "widgets/dialogs/IconView.h"
#include "widgets/groupedit/ImageWell.h"
#include "widgets/images/ProgramImages.h"

#include <QAccessible>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

namespace veilkeep {
namespace {

constexpr int usualWidth = 440, margin = 20, spacing = 12, iconExtent = 48;
constexpr QSize menuImage{16, 16};

QLabel* wrappedLabel(const QString& text) {
    auto* const label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

GroupEditSheet::GroupEditSheet(GroupEditController& controller, QWidget* parent)
    : QDialog(parent),
      m_controller(controller),
      m_groupNameField(new QLineEdit),
      m_groupIcon(new ImageWell),
      m_popUpGroupIcons(new QComboBox),
      m_autoHideBox(new CheckBox(tr("&AutoHide"))),
      m_line(new MessageBar(MessageBar::Kind::Warning)),
      m_editWindowTabView(new QStackedWidget(this)) {
    setWindowTitle(tr("Edit Group"));
    setWindowModality(parent ? Qt::WindowModal : Qt::ApplicationModal);
    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins(margin, margin, margin, margin - 4);
    whole->addWidget(m_editWindowTabView);
    m_line->hide();
    configureGroupIconsMenu();
    m_editWindowTabView->addWidget(makeForm());
    m_editWindowTabView->addWidget(makeTakenMessage());
    for (std::size_t next = 1; next < m_tabOrder.size(); ++next)
        setTabOrder(m_tabOrder[next - 1], m_tabOrder[next]); // a box of buttons mixes it up
    connect(m_groupIcon, &ImageWell::fileDropped, this,
            [this](const std::string& path) { m_controller.takeImageFile(path); });
    connect(m_groupIcon, &ImageWell::imageDropped, this, [this](const QByteArray& bytes) {
        m_controller.takeImage({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    });
    connect(m_autoHideBox, &QCheckBox::clicked, this, [this] { m_controller.autoHideChanged(); });
}

void GroupEditSheet::configureGroupIconsMenu() {
    m_popUpGroupIcons->setAccessibleName(tr("Select Existing Icons"));
    m_popUpGroupIcons->setToolTip(tr("Select Existing Icons"));
    m_popUpGroupIcons->setPlaceholderText(tr("Select Existing Icons"));
    m_popUpGroupIcons->setIconSize(menuImage);
    m_popUpGroupIcons->setMaxVisibleItems(static_cast<int>(m_controller.menuItems().size()));
    for (const GroupEditController::MenuItem& item : m_controller.menuItems())
        m_popUpGroupIcons->addItem(programImage::named(QLatin1String(item.IconPath)),
                                   GroupEditController::shownIconName(item), QLatin1String(item.IconName));
    connect(m_popUpGroupIcons, &QComboBox::activated, this, [this] { m_controller.setFromList(); });
}

// --- The form ---

QWidget* GroupEditSheet::makeForm() {
    auto* const page = new QWidget;
    page->setObjectName(QStringLiteral("SetName"));
    auto* const rows = new QVBoxLayout(page);
    rows->setContentsMargins({});
    rows->setSpacing(spacing);
    auto* const form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->setVerticalSpacing(spacing);
    rows->addLayout(form);
    m_groupNameField->setAccessibleName(tr("Name of the group"));
    form->addRow(tr("&Name:"), m_groupNameField);
    auto* const iconLabel = new QLabel(tr("&Icon:"));
    iconLabel->setBuddy(m_popUpGroupIcons);
    form->addRow(iconLabel, makeIconRow());
    m_autoHideBox->setToolTip(tr("Hide this group whenever you leave the computer"));
    form->addRow(nullptr, m_autoHideBox);
    rows->addWidget(m_line);
    rows->addStretch(1);
    rows->addWidget(makeButtons());
    return page;
}

QWidget* GroupEditSheet::makeIconRow() {
    auto* const row = new QWidget;
    auto* const columns = new QHBoxLayout(row);
    columns->setContentsMargins({});
    columns->setSpacing(spacing);
    columns->addWidget(m_groupIcon);
    auto* const ways = new QVBoxLayout;
    columns->addLayout(ways, 1);
    ways->addWidget(m_popUpGroupIcons);
    auto* const choose = new QPushButton(tr("&Choose Image…"));
    choose->setAutoDefault(false);
    connect(choose, &QPushButton::clicked, this, [this] { m_controller.changeFileLocation(); });
    ways->addWidget(choose, 0, Qt::AlignLeading);
    return row;
}

QWidget* GroupEditSheet::makeButtons() {
    auto* const box = new QDialogButtonBox;
    m_ok = box->addButton(tr("OK"), QDialogButtonBox::AcceptRole);
    auto* const cancel = box->addButton(tr("Cancel"), QDialogButtonBox::RejectRole);
    auto* const reset = box->addButton(tr("&Reset"), QDialogButtonBox::ResetRole);
    for (QPushButton* const button : {cancel, reset})
        button->setAutoDefault(false);
    connect(m_ok, &QPushButton::clicked, this, [this] { m_controller.apply(); });
    connect(cancel, &QPushButton::clicked, this, [this] { m_controller.cancel(); });
    connect(reset, &QPushButton::clicked, this, [this] { m_controller.resetToDefault(); });
    m_tabOrder = {m_autoHideBox, m_ok, cancel, reset};
    return box;
}

// --- The message that the name is taken ---

QWidget* GroupEditSheet::makeTakenMessage() {
    m_message = new QWidget;
    m_message->setObjectName(QStringLiteral("ErrorExist"));
    auto* const rows = new QVBoxLayout(m_message);
    rows->setContentsMargins({});
    auto* const columns = new QHBoxLayout;
    columns->setSpacing(16);
    rows->addLayout(columns, 1);
    columns->addWidget(new IconView(style()->standardIcon(QStyle::SP_MessageBoxWarning), iconExtent), 0,
                       Qt::AlignTop);
    auto* const texts = new QVBoxLayout;
    columns->addLayout(texts, 1);
    QLabel* const title = wrappedLabel(EnteredName::faultText(EnteredName::Fault::Taken));
    QFont bold = font();
    bold.setBold(true);
    title->setFont(bold);
    texts->addWidget(title);
    QLabel* const explanation = wrappedLabel(tr("Go back and enter another name. Nothing has been changed."));
    texts->addWidget(explanation);
    texts->addStretch(1);
    m_message->setAccessibleName(title->text());
    m_message->setAccessibleDescription(explanation->text());
    auto* const box = new QDialogButtonBox;
    m_back = box->addButton(tr("&Back"), QDialogButtonBox::AcceptRole);
    m_back->setAccessibleDescription(title->text());
    connect(m_back, &QPushButton::clicked, this, [this] { m_controller.back(); });
    rows->addWidget(box);
    return m_message;
}

void GroupEditSheet::showTab(GroupEditView::Tab tab) {
    const bool isMessage = tab == GroupEditView::Tab::ErrorExist;
    m_editWindowTabView->setCurrentIndex(isMessage ? 1 : 0);
    (isMessage ? m_back : m_ok)->setDefault(true);
    if (isMessage)
        return m_back->setFocus();
    m_groupNameField->setFocus();
    m_groupNameField->selectAll();
}

// --- The window ---

void GroupEditSheet::tell(const QString& line) {
    m_line->setVisible(false); // what comes anew is read out
    m_line->setText(line);
    m_line->setVisible(!line.isEmpty());
    fit();
}

// As high as the texts need; the top edge stays.
void GroupEditSheet::fit() {
    layout()->activate();
    const int width = std::max({usualWidth, this->width(), layout()->minimumSize().width()});
    const int height = layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width)
                                                     : layout()->totalSizeHint().height();
    resize(width, height);
}

void GroupEditSheet::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!event->spontaneous())
        showTab(GroupEditView::Tab::SetName);
}

void GroupEditSheet::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (layout() && (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange))
        fit();
}

void GroupEditSheet::reject() {
    if (m_editWindowTabView->currentIndex() == 0)
        return QDialog::reject();
    m_controller.back();
}

} // namespace veilkeep
