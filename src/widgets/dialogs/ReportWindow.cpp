#include "widgets/dialogs/ReportWindow.h"

#include "filelist/Texts.h"
#include "widgets/dialogs/TextBlock.h"
#include "widgets/dialogs/windowPlacement.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace veilkeep {
namespace {

struct ReportTexts {
    Q_DECLARE_TR_FUNCTIONS(ReportWindow)
};

QPlainTextEdit* reportView(const QString& text) {
    auto* const view = new QPlainTextEdit(text);
    view->setReadOnly(true);
    view->setTabChangesFocus(true);
    view->setAccessibleName(ReportTexts::tr("Problem report"));
    view->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    return view;
}

QDialogButtonBox* reportButtons(QDialog* window, const ReportWindow::WhenChosen& whenChosen) {
    auto* const box = new QDialogButtonBox;
    const auto add = [&](const QString& title, QDialogButtonBox::ButtonRole role,
                         ReportWindow::Action action) {
        QPushButton* const button = box->addButton(title, role);
        QObject::connect(button, &QPushButton::clicked, window, [whenChosen, action] { whenChosen(action); });
        return button;
    };
    using Action = ReportWindow::Action;
    add(ReportTexts::tr("Open"), QDialogButtonBox::ActionRole, Action::Open);
    add(ReportTexts::tr("Copy"), QDialogButtonBox::ActionRole, Action::Copy);
    QPushButton* const remove =
        add(ReportTexts::tr("Delete"), QDialogButtonBox::DestructiveRole, Action::Delete);
    QObject::connect(remove, &QPushButton::clicked, window, &QDialog::accept);
    QObject::connect(box, &QDialogButtonBox::rejected, window, &QDialog::reject);
    QObject::connect(window, &QDialog::rejected, window, [whenChosen] { whenChosen(Action::Close); });
    return box;
}

} // namespace

ReportWindow::~ReportWindow() {
    delete m_window;
}

void ReportWindow::show(const QString& reason, const QString& text, const std::string& path,
                        WhenChosen whenChosen) {
    close();
    m_window = new QDialog;
    m_window->setAttribute(Qt::WA_DeleteOnClose);
    m_window->setWindowTitle(applicationName());
    auto* const rows = new QVBoxLayout(m_window);
    constexpr int mostLines = 6;
    rows->addWidget(new TextBlock(
        reason + QLatin1Char('\n') +
            ReportTexts::tr("It stays on this computer until you pass it on; please read it before:") +
            QLatin1Char('\n') + shownPath(path),
        mostLines));
    rows->addWidget(reportView(text), 1);
    auto* const box = reportButtons(m_window, std::move(whenChosen));
    rows->addWidget(box);
    QPushButton* const close = box->addButton(ReportTexts::tr("Close"), QDialogButtonBox::RejectRole);
    close->setDefault(true);
    close->setFocus();
    m_window->resize(600, 440);
    placeWindow(*m_window);
    m_window->show();
}

// May well be called by whoever is just told of a choice.
void ReportWindow::close() {
    if (!m_window)
        return;
    m_window->hide();
    m_window->deleteLater();
    m_window.clear();
}

} // namespace veilkeep
