#include "widgets/dialogs/ProgressPanel.h"

#include "filelist/Texts.h"
#include "platform/EventLoop.h"
#include "widgets/controls/ElidedLabel.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>

namespace veilkeep {
namespace {

// While it lives, windows other than the one get no input.
class InputForOneWindow : public QObject {
public:
    explicit InputForOneWindow(const QWidget& window) : m_window(window) { qApp->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        return isInput(event->type()) && watched->isWindowType() && watched != m_window.windowHandle();
    }

private:
    static bool isInput(QEvent::Type type) {
        static constexpr QEvent::Type types[] = {QEvent::MouseButtonPress,
                                                 QEvent::MouseButtonRelease,
                                                 QEvent::MouseButtonDblClick,
                                                 QEvent::KeyPress,
                                                 QEvent::KeyRelease,
                                                 QEvent::ShortcutOverride,
                                                 QEvent::Wheel,
                                                 QEvent::TouchBegin,
                                                 QEvent::TouchEnd,
                                                 QEvent::TabletPress,
                                                 QEvent::DragEnter,
                                                 QEvent::Drop,
                                                 QEvent::Close};
        return std::ranges::find(types, type) != std::end(types);
    }

    const QWidget& m_window;
};

} // namespace

ProgressPanel::ProgressPanel(QWidget* mainWindow)
    : QDialog(mainWindow),
      m_stage(new QLabel),
      m_subStage(new ElidedLabel),
      m_bar(new QProgressBar),
      m_count(new QLabel),
      m_cancel(new QPushButton) {
    setWindowTitle(applicationName());
    setWindowModality(Qt::WindowModal);
    setWindowFlag(Qt::WindowCloseButtonHint, false);
    m_stage->setTextFormat(Qt::PlainText);
    m_stage->setWordWrap(true);
    QFont bold = font();
    bold.setBold(true);
    m_stage->setFont(bold);
    m_bar->setTextVisible(false);
    m_bar->setAccessibleName(tr("Progress"));
    m_cancel->setAutoDefault(false);
    connect(m_cancel, &QPushButton::clicked, this, &ProgressPanel::reject);
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(20, 18, 20, 16);
    rows->setSpacing(10);
    rows->addWidget(m_stage);
    m_subStage->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); // long paths do not widen the sheet
    rows->addWidget(m_subStage);
    rows->addWidget(m_bar);
    auto* const last = new QHBoxLayout;
    last->addWidget(m_count, 1);
    last->addWidget(m_cancel);
    rows->addLayout(last);
    constexpr int usualWidth = 420;
    m_bar->setMinimumWidth(usualWidth);
    rows->setSizeConstraint(QLayout::SetFixedSize);
}

void ProgressPanel::begin(const QString& stage, bool canBeCancelled) {
    m_isCancelled = false;
    m_stage->setText(stage);
    setAccessibleName(stage);
    m_cancel->setText(tr("Cancel"));
    m_cancel->setVisible(canBeCancelled);
    m_cancel->setEnabled(true);
    setSubStage({});
    setDone(0, 0);
}

void ProgressPanel::setSubStage(const QString& subStage) {
    m_subStage->setText(subStage);
}

// An indeterminate bar where the total is not known.
void ProgressPanel::setDone(std::size_t done, std::size_t total) {
    constexpr std::size_t most = 1'000'000; // what the bar is asked to count to
    const std::size_t unit = total / most + 1;
    m_bar->setRange(0, static_cast<int>(total / unit));
    m_bar->setValue(static_cast<int>(std::min(done, total) / unit));
    const QLocale locale;
    m_count->setText(total == 0 ? QString()
                                : tr("%1 of %2")
                                      .arg(locale.toString(qulonglong{std::min(done, total)}),
                                           locale.toString(qulonglong{total})));
}

bool ProgressPanel::canBeCancelled() const {
    return !m_cancel->isHidden() && !m_isCancelled;
}

void ProgressPanel::takeInput() {
    if (m_isTakingInput || QApplication::activeModalWidget() != this)
        return; // a question is in front, whose own event loop takes its input
    const QScopedValueRollback taking(m_isTakingInput, true);
    const InputForOneWindow onlyHere(*this);
    wakeEventLoop();
    constexpr int most = 20; // ms
    QCoreApplication::processEvents(QEventLoop::AllEvents, most);
}

void ProgressPanel::reject() {
    if (!canBeCancelled())
        return;
    m_isCancelled = true;
    m_cancel->setEnabled(false);
    m_cancel->setText(tr("Cancelling…"));
}

void ProgressPanel::closeEvent(QCloseEvent* event) {
    reject();
    event->ignore();
}

} // namespace veilkeep
