#include "tests/support/ScriptedPresenter.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>
#include <QTimer>

#include <algorithm>

namespace veilkeep::test {
namespace {

QStringList titlesOf(const std::vector<Alert::Button>& buttons) {
    QStringList titles;
    for (const Alert::Button& button : buttons)
        titles.push_back(button.title);
    return titles;
}

void compare(const ExpectedAlert& expected, const Alert& alert) {
    const QStringList buttons = titlesOf(alert.buttons);
    EXPECT_EQ(alert.title.toStdString(), expected.title.toStdString());
    EXPECT_EQ(alert.message.toStdString(), expected.message.value_or(alert.message).toStdString());
    EXPECT_EQ(buttons.join(" | ").toStdString(),
              expected.buttons.value_or(buttons).join(" | ").toStdString());
    EXPECT_EQ(alert.style, expected.style.value_or(alert.style));
    EXPECT_TRUE(alert.offersSuppression || !expected.suppress) << "there is no check box";
}

bool runEventsUntil(const bool& condition) {
    const QDeadlineTimer deadline(20'000);
    QTimer waking; // so that the deadline is looked at
    waking.start(100);
    while (!condition && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return condition;
}

} // namespace

ScriptedPresenter::~ScriptedPresenter() {
    for (const ExpectedAlert& alert : m_expected)
        ADD_FAILURE() << "this alert did not come: " << alert.title.toStdString();
}

AlertAnswer ScriptedPresenter::run(const Alert& alert) {
    const QCoreApplication* const application = QCoreApplication::instance();
    if (!application || application->thread() == QThread::currentThread())
        return show(alert);
    AlertAnswer answer;
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [&] { answer = show(alert); }, Qt::BlockingQueuedConnection);
    return answer;
}

void ScriptedPresenter::begin(const Alert& alert) {
    EXPECT_EQ(alert.buttons.size(), 1U);
    show(alert);
}

AlertAnswer ScriptedPresenter::show(const Alert& alert) {
    const AlertAnswer cancelled{alert.codeWhenCancelled()};
    if (!alert.beginShowing())
        return cancelled;
    m_shown.push_back(alert);
    const auto expected = nextFor(alert);
    if (!expected)
        return cancelled;
    OpenAlert open;
    m_open.push_back(&open);
    expected->whileOpen();
    if (expected->answer.isNull() && !runEventsUntil(open.cancelled))
        ADD_FAILURE() << "nobody cancelled: " << alert.title.toStdString();
    std::erase(m_open, &open);
    if (open.cancelled) {
        EXPECT_TRUE(expected->answer.isNull()) << "was cancelled: " << alert.title.toStdString();
        return cancelled;
    }
    const auto button = std::ranges::find(alert.buttons, expected->answer, &Alert::Button::title);
    if (button == alert.buttons.end()) {
        ADD_FAILURE() << alert.title.toStdString() << " has no button " << expected->answer.toStdString();
        return cancelled;
    }
    return {button->code, expected->suppress};
}

std::optional<ExpectedAlert> ScriptedPresenter::nextFor(const Alert& alert) {
    if (m_expected.empty()) {
        ADD_FAILURE() << "unexpected alert: " << alert.title.toStdString() << "\n"
                      << alert.message.toStdString();
        return std::nullopt;
    }
    ExpectedAlert expected = std::move(m_expected.front());
    m_expected.pop_front();
    compare(expected, alert);
    return expected;
}

void ScriptedPresenter::cancelOpen() {
    for (OpenAlert* const alert : m_open)
        alert->cancelled = true;
}

void ScriptedPresenter::serveOthers() {
    QCoreApplication::processEvents();
}

} // namespace veilkeep::test
