#pragma once

#include "tests/support/gui/RealInput.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>
#include <QTimer>

#include <chrono>
#include <functional>

namespace veilkeep::test {

// The window of that class which is open, the last one where there are several; null for none.
template <class Window>
Window* openWindow() {
    Window* found = nullptr;
    for (QWidget* const each : QApplication::topLevelWidgets())
        if (auto* const window = dynamic_cast<Window*>(each); window && window->isVisible())
            if (!found || QApplication::activeModalWidget() == window)
                found = window;
    return found;
}

// Has the steps done in the event loop that turns while the window is open, once it has the keyboard.
template <class Window>
void whenOpen(std::function<void(Window&)> steps) {
    auto* const look = new QTimer(qApp);
    QObject::connect(look, &QTimer::timeout, qApp, [look, steps = std::move(steps)] {
        Window* const window = openWindow<Window>();
        if (!window)
            return;
        look->stop();
        look->deleteLater();
        EXPECT_TRUE(showAndActivate(*window));
        settle();
        steps(*window);
    });
    look->start(std::chrono::milliseconds(5));
}

inline QPushButton* buttonOf(const QWidget& window, const QString& text) {
    for (QPushButton* const button : window.findChildren<QPushButton*>())
        if (button->text() == text)
            return button;
    ADD_FAILURE() << "no button " << text.toStdString();
    return nullptr;
}

} // namespace veilkeep::test
