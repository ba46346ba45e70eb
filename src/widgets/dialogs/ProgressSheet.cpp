#include "widgets/dialogs/ProgressSheet.h"

#include "platform/EventLoop.h"
#include "widgets/dialogs/KeyboardReturn.h"
#include "widgets/dialogs/ProgressPanel.h"
#include "widgets/dialogs/windowPlacement.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <utility>

namespace veilkeep {
namespace {

constexpr std::chrono::milliseconds frame(33);
constexpr std::chrono::milliseconds patience(150); // a batch that is through by then shows no sheet

} // namespace

ProgressSheet::ProgressSheet(MainWindowAnswer mainWindow) : m_mainWindow(std::move(mainWindow)) {
    for (QTimer* const timer : {&m_showing, &m_updating, &m_hiding})
        timer->setSingleShot(true);
    QObject::connect(&m_showing, &QTimer::timeout, &m_showing, [this] { show(); });
    QObject::connect(&m_updating, &QTimer::timeout, &m_updating, [this] { update(); });
    QObject::connect(&m_hiding, &QTimer::timeout, &m_hiding, [this] { hide(); });
}

ProgressSheet::~ProgressSheet() {
    delete m_panel;
}

void ProgressSheet::begin(const QString& stage, bool canBeCancelled) {
    m_hiding.stop();
    m_subStage.clear();
    m_done = m_total = 0;
    QWidget* const mainWindow = visibleWindow(m_mainWindow);
    m_isOpen = m_hasWindow = mainWindow != nullptr;
    if (!m_isOpen)
        return end();
    if (!m_panel || m_panel->parentWidget() != mainWindow) {
        delete m_panel;
        m_panel = new ProgressPanel(mainWindow);
        new KeyboardReturn(*m_panel);
    }
    m_panel->begin(stage, canBeCancelled);
    m_updated = m_inputTaken = Clock::now();
    m_showing.start(patience);
}

void ProgressSheet::show() {
    if (!m_panel || m_panel->isVisible())
        return;
    update();
    placeWindow(*m_panel);
    m_panel->show();
}

// What was meant for the list while the sheet was in front must not reach it afterwards.
void ProgressSheet::hide() {
    if (m_panel)
        m_panel->takeInput();
    if (m_panel && !m_isOpen)
        m_panel->hide();
}

void ProgressSheet::setSubStage(const QString& subStage) {
    m_subStage = subStage;
    update();
}

void ProgressSheet::setDone(std::size_t done, std::size_t total) {
    m_done = done;
    m_total = total;
    update();
}

// At most once a frame; the last state of a burst comes with the timer.
void ProgressSheet::update() {
    if (!m_isOpen || !m_panel)
        return;
    const auto now = Clock::now();
    if (now - m_updated < frame && m_updating.isActive())
        return;
    if (now - m_updated < frame)
        return m_updating.start(frame);
    m_updated = now;
    m_panel->setSubStage(m_subStage);
    m_panel->setDone(m_done, m_total);
}

void ProgressSheet::end() {
    m_isOpen = false;
    m_showing.stop();
    m_updating.stop();
    m_hiding.start(0);
}

bool ProgressSheet::isCancelled() const {
    takeInput();
    return m_hasWindow && m_panel && m_panel->isCancelled();
}

void ProgressSheet::takeInput() const {
    if (!m_isOpen || !m_panel || !m_panel->canBeCancelled() || Clock::now() - m_inputTaken < frame)
        return;
    m_panel->takeInput();
    m_inputTaken = Clock::now();
}

void ProgressSheet::turnEventLoop() {
    takeInput();
    wakeEventLoop();
    constexpr int most = 20; // ms
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, most);
}

} // namespace veilkeep
