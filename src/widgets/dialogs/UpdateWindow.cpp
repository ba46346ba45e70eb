#include "widgets/dialogs/UpdateWindow.h"

#include "filelist/Texts.h"
#include "widgets/dialogs/IconView.h"
#include "widgets/dialogs/KeyboardReturn.h"
#include "widgets/dialogs/windowPlacement.h"
#include "widgets/images/ProgramImages.h"

#include <QAccessible>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include <utility>

namespace veilkeep {
namespace {

class UpdatePanel : public QDialog {
    Q_DECLARE_TR_FUNCTIONS(UpdateWindow)

public:
    explicit UpdatePanel(QWidget* mainWindow);

    void showLooking();
    void showAnswer(const QString& title, const QString& message);

private:
    QLabel* m_title;
    QLabel* m_message;
    QProgressBar* m_bar;
    QPushButton* m_button;
};

QLabel* plainLabel() {
    auto* const label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

UpdatePanel::UpdatePanel(QWidget* mainWindow)
    : QDialog(mainWindow),
      m_title(plainLabel()),
      m_message(plainLabel()),
      m_bar(new QProgressBar),
      m_button(nullptr) {
    constexpr int margin = 20, iconExtent = 48, width = 340;
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Software Update"));
    QFont bold = font();
    bold.setBold(true);
    m_title->setFont(bold);
    m_title->setMinimumWidth(width);
    m_bar->setRange(0, 0);
    m_bar->setTextVisible(false);
    m_bar->setAccessibleName(tr("Looking for updates…"));
    auto* const box = new QDialogButtonBox;
    m_button = box->addButton(QString(), QDialogButtonBox::RejectRole);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(margin, margin, margin, margin - 4);
    grid->setHorizontalSpacing(16);
    grid->addWidget(new IconView(programImage::named(QStringLiteral("update")), iconExtent), 0, 0, 3, 1,
                    Qt::AlignTop);
    grid->addWidget(m_title, 0, 1);
    grid->addWidget(m_message, 1, 1);
    grid->addWidget(m_bar, 2, 1);
    grid->addWidget(box, 3, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    m_button->setDefault(true);
    m_button->setFocus();
    showLooking();
}

void UpdatePanel::showLooking() {
    m_title->setText(tr("Looking for updates…"));
    m_message->hide();
    m_bar->show();
    m_button->setText(tr("Cancel"));
    setAccessibleDescription({});
}

void UpdatePanel::showAnswer(const QString& title, const QString& message) {
    m_title->setText(title);
    m_message->setText(message);
    m_message->show();
    m_bar->hide();
    m_button->setText(tr("OK"));
    setAccessibleDescription(title + QLatin1Char('\n') + message);
    QAccessibleEvent told(this, QAccessible::Alert); // who does not see it hears it
    QAccessible::updateAccessibility(&told);
    adjustSize();
}

UpdatePanel* panelOf(const QPointer<QDialog>& window) {
    return static_cast<UpdatePanel*>(window.data());
}

} // namespace

UpdateWindow::UpdateWindow(MainWindowAnswer mainWindow, std::function<void()> cancel)
    : m_mainWindow(std::move(mainWindow)), m_cancel(std::move(cancel)) {}

UpdateWindow::~UpdateWindow() {
    delete m_window;
}

void UpdateWindow::show() {
    if (!m_window) {
        m_window = new UpdatePanel(m_mainWindow());
        new KeyboardReturn(*m_window);
        QObject::connect(m_window, &QDialog::finished, m_window, [this] {
            m_window.clear(); // it goes a moment later
            m_cancel();
        });
        placeWindow(*m_window);
    }
    panelOf(m_window)->showLooking();
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

void UpdateWindow::showAnswer(const QString& title, const QString& message) {
    if (m_window)
        panelOf(m_window)->showAnswer(title, message);
}

void UpdateWindow::close() {
    if (m_window)
        m_window->close();
}

} // namespace veilkeep
