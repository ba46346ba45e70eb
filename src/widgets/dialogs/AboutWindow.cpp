#include "widgets/dialogs/AboutWindow.h"

#include "filelist/Texts.h"
#include "widgets/dialogs/IconView.h"
#include "widgets/dialogs/windowPlacement.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace veilkeep {
namespace {

struct AboutTexts {
    Q_DECLARE_TR_FUNCTIONS(AboutWindow)
};

QLabel* centredLabel(const QString& text) {
    constexpr int width = 320;
    auto* const label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    label->setMinimumWidth(width);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

QLabel* nameLabel() {
    QLabel* const label = centredLabel(applicationName());
    QFont font = label->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.6);
    label->setFont(font);
    return label;
}

QDialog* makeWindow(const QString& version, const std::function<void()>& openGuide) {
    constexpr int iconExtent = 96, margin = 28;
    auto* const window = new QDialog;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowTitle(AboutTexts::tr("About %1").arg(applicationName()));
    auto* const rows = new QVBoxLayout(window);
    rows->setContentsMargins(margin, margin, margin, margin - 8);
    rows->setSpacing(10);
    rows->addWidget(new IconView(QApplication::windowIcon(), iconExtent), 0, Qt::AlignHCenter);
    rows->addWidget(nameLabel());
    rows->addWidget(centredLabel(AboutTexts::tr("Version %1").arg(version)));
    rows->addWidget(
        centredLabel(AboutTexts::tr("Hides files and folders from ordinary view and brings them back.")));
    rows->addWidget(centredLabel(
        AboutTexts::tr("Free software under the GNU General Public License, version 3. It comes with no "
                       "warranty.")));
    rows->addSpacing(6);
    auto* const box = new QDialogButtonBox;
    QPushButton* const guide = box->addButton(AboutTexts::tr("Open the Guide"), QDialogButtonBox::HelpRole);
    QObject::connect(guide, &QPushButton::clicked, window, openGuide);
    QObject::connect(box, &QDialogButtonBox::rejected, window, &QDialog::close);
    rows->addWidget(box);
    QPushButton* const close = box->addButton(AboutTexts::tr("Close"), QDialogButtonBox::RejectRole);
    close->setDefault(true);
    close->setFocus();
    return window;
}

} // namespace

AboutWindow::AboutWindow(QString version, std::function<void()> openGuide)
    : m_version(std::move(version)), m_openGuide(std::move(openGuide)) {}

AboutWindow::~AboutWindow() {
    delete m_window;
}

void AboutWindow::show() {
    if (!m_window) {
        m_window = makeWindow(m_version, m_openGuide);
        placeWindow(*m_window);
    }
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

void AboutWindow::close() {
    if (m_window)
        m_window->close();
}

} // namespace veilkeep
