#include "widgets/preferences/PrefsWindow.h"

#include "widgets/controls/MessageBar.h"
#include "widgets/controls/Mnemonics.h"
#include "widgets/controls/RowControls.h"
#include "widgets/dialogs/windowPlacement.h"
#include "widgets/images/ProgramImages.h"
#include "widgets/preferences/GeneralPage.h"
#include "widgets/preferences/NoticeLine.h"
#include "widgets/preferences/PageButton.h"
#include "widgets/preferences/PageHost.h"
#include "widgets/preferences/PasswordPages.h"
#include "widgets/preferences/SecurityPage.h"
#include "widgets/preferences/UpdatePage.h"

#include <QCheckBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QShortcut>
#include <QShowEvent>
#include <QStyle>

#include <algorithm>

namespace veilkeep {

PrefsWindow::PrefsWindow(PrefsController& controller)
    : m_controller(controller),
      m_toolbar(new QWidget(this)),
      m_toolbarRow(new QHBoxLayout(m_toolbar)),
      m_trouble(new MessageBar(MessageBar::Kind::Warning, this)),
      m_host(new PageHost(this)),
      m_slide(new QVariantAnimation(this)) {
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                   Qt::WindowCloseButtonHint);
    m_toolbar->setAccessibleName(tr("Preferences Toolbar"));
    m_toolbarRow->setContentsMargins(8, 6, 8, 6);
    m_toolbarRow->setSpacing(4);
    m_toolbarRow->setAlignment(Qt::AlignHCenter);
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins({});
    rows->setSpacing(0);
    rows->setSizeConstraint(QLayout::SetNoConstraint);
    rows->addWidget(m_toolbar);
    rows->addWidget(m_trouble);
    rows->addWidget(m_host, 1);
    m_trouble->setDismissible(true);
    m_trouble->hide();
    connect(m_trouble, &MessageBar::dismissed, this, &PrefsWindow::fit);
    connect(m_host, &PageHost::neededSizeChanged, this, &PrefsWindow::fit);
    connect(m_slide, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& height) { setFixedSize(width(), height.toInt()); });
    connect(m_slide, &QVariantAnimation::finished, this, &PrefsWindow::fit);
    connect(new QShortcut(QKeySequence::Close, this), &QShortcut::activated, this, &QWidget::close);
    makePages();
    connectBoxes();
    m_controller.setView(this);
    m_controller.awakeFromNib();
    assignMnemonics();
    m_controller.windowDidLoad();
}

PrefsWindow::~PrefsWindow() {
    m_controller.setView(nullptr);
}

// --- The toolbar ---

void PrefsWindow::installToolbar(const QString& selectedItemIdentifier) {
    for (const auto& [identifier, button] : std::exchange(m_items, {}))
        delete button;
    for (const PrefsItem& item : PrefsController::toolbarItems()) {
        auto* const button = new PageButton(item.label, programImage::named(item.image), m_toolbar);
        m_items.emplace(item.itemIdentifier, button);
        m_toolbarRow->addWidget(button);
        connect(button, &PageButton::clicked, this, [this, item] { m_controller.setPrefView(item); });
    }
    selectItem(selectedItemIdentifier);
    assignMnemonics();
}

QString PrefsWindow::selectedItemIdentifier() const {
    const auto chosen =
        std::ranges::find_if(m_items, [](const auto& item) { return item.second->isChecked(); });
    return chosen == m_items.end() ? QString() : chosen->first;
}

void PrefsWindow::selectItem(const QString& itemIdentifier) {
    if (const auto found = m_items.find(itemIdentifier); found != m_items.end())
        found->second->setChecked(true);
}

// --- Pages ---

void PrefsWindow::makePages() {
    const auto add = [this](PrefsPage page, QWidget* widget) {
        m_pages.emplace(page, widget);
        m_host->addPage(*widget);
    };
    auto* const security = new SecurityPage(m_controls);
    connect(security, &SecurityPage::changePasswordClicked, this,
            [this] { m_controller.changePasswordClick(); });
    auto* const update = new UpdatePage(m_controls);
    connect(update, &UpdatePage::checkNowClicked, this, [this] { m_controller.checkNowClick(); });
    add(PrefsPage::General, new GeneralPage(m_controls));
    add(PrefsPage::Security, security);
    add(PrefsPage::Update, update);
    const auto addPasswords = [&](PrefsPage page, PasswordPage* widget, void (PrefsController::*ok)(),
                                  void (PrefsController::*cancel)()) {
        add(page, widget);
        connect(widget, &PasswordPage::okClicked, &m_controller, ok);
        connect(widget, &PasswordPage::cancelClicked, &m_controller, cancel);
    };
    addPasswords(PrefsPage::SetPassword, PasswordPage::makeSetPasswordView(m_controls),
                 &PrefsController::setPasswordOkClick, &PrefsController::setPasswordCancelClick);
    addPasswords(PrefsPage::ChangePassword, PasswordPage::makeChangePasswordView(m_controls),
                 &PrefsController::changePasswordOkClick, &PrefsController::passwordCancelClick);
    addPasswords(PrefsPage::AskPassword, PasswordPage::makeEnterPasswordView(m_controls),
                 &PrefsController::enterPasswordOkClick, &PrefsController::passwordCancelClick);
}

void PrefsWindow::connectBoxes() {
    for (const auto& [box, control] : m_controls.boxes)
        connect(control, &QCheckBox::clicked, this, [this, box = box] { m_controller.boxClick(box); });
    connect(m_controls.boxes.at(PrefsBox::RequirePasswordBox), &QCheckBox::toggled, this,
            &PrefsWindow::assignMnemonics); // the button beside it has another title then
}

void PrefsWindow::assignMnemonics() {
    QString taken;
    for (const PrefsItem& item : PrefsController::toolbarItems())
        if (const auto button = m_items.find(item.itemIdentifier); button != m_items.end())
            button->second->setText(withMnemonic(item.label, taken));
    for (const auto& [page, widget] : m_pages)
        assignMnemonicsWithin(*widget, taken);
}

void PrefsWindow::showPage(PrefsPage page) {
    m_page = page;
    QWidget& shown = *m_pages.at(page);
    m_host->showPage(shown);
    if (auto* const passwords = qobject_cast<PasswordPage*>(&shown))
        passwords->okButton().setDefault(true);
    slideToFit();
}

// --- Size ---

QSize PrefsWindow::neededSize() const {
    const int width = std::max(m_toolbar->sizeHint().width(), m_host->widthNeeded());
    int height = m_toolbar->sizeHint().height();
    if (!m_trouble->isHidden())
        height += m_trouble->layout()->totalHeightForWidth(width);
    return {width, height + m_host->heightNeeded()};
}

void PrefsWindow::fit() {
    if (m_slide->state() != QAbstractAnimation::Running && m_page != PrefsPage::None)
        setFixedSize(neededSize());
}

// The top edge stays where it is.
void PrefsWindow::slideToFit() {
    const int duration = style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this);
    m_slide->stop();
    const QSize needed = neededSize();
    if (!isVisible() || duration <= 0 || needed.width() != width())
        return fit();
    m_slide->setDuration(duration);
    m_slide->setStartValue(height());
    m_slide->setEndValue(needed.height());
    m_slide->setEasingCurve(QEasingCurve::InOutQuad);
    m_slide->start();
}

void PrefsWindow::betterCenter() {
    fit();
    veilkeep::betterCenter(*this);
}

void PrefsWindow::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fit();
}

// --- What is on the pages ---

bool PrefsWindow::isOn(PrefsBox box) const {
    return m_controls.boxes.at(box)->isChecked();
}

void PrefsWindow::setOn(PrefsBox box, bool isOn) {
    m_controls.boxes.at(box)->setChecked(isOn);
}

void PrefsWindow::setEnabled(PrefsBox box, bool isEnabled) {
    m_controls.boxes.at(box)->setEnabled(isEnabled);
}

QString PrefsWindow::stringValue(PrefsField field) const {
    return m_controls.fields.at(field)->text();
}

void PrefsWindow::setStringValue(PrefsField field, const QString& text) {
    m_controls.fields.at(field)->setText(text);
}

void PrefsWindow::makeFirstResponder(PrefsField field) {
    QLineEdit& edit = *m_controls.fields.at(field);
    edit.setFocus();
    edit.selectAll();
}

void PrefsWindow::setStringValue(PrefsText text, const QString& value) {
    m_controls.texts.at(text)->setText(value);
}

void PrefsWindow::setHidden(PrefsText text, bool isHidden) {
    QLabel* const label = m_controls.texts.at(text);
    auto* const notice = qobject_cast<NoticeLine*>(label);
    if (notice && !isHidden)
        notice->tell();
    else
        label->setHidden(isHidden);
}

void PrefsWindow::showTrouble(const QString& trouble) {
    m_trouble->hide(); // to be read out anew
    m_trouble->setText(trouble);
    m_trouble->setVisible(!trouble.isEmpty());
    fit();
}

// --- The window itself ---

void PrefsWindow::showEvent(QShowEvent* event) {
    if (!event->spontaneous())
        m_controller.windowWillAppear();
    QDialog::showEvent(event);
}

void PrefsWindow::reject() {
    m_controller.windowWillClose();
    if (QWidget* const first = focusWidget())
        first->clearFocus();
    QDialog::reject();
}

void PrefsWindow::paintEvent(QPaintEvent* event) {
    QDialog::paintEvent(event);
    QPainter painter(this);
    fillSeparator(painter, m_toolbar->geometry(), Qt::BottomEdge, separatorColor(palette()));
}

} // namespace veilkeep
