#include "widgets/mainwindow/PaneFocus.h"

#include <QApplication>
#include <QShortcut>

#include <algorithm>
#include <utility>

namespace veilkeep {

PaneFocus::PaneFocus(QWidget& window, std::vector<Pane> panes) : QObject(&window), m_panes(std::move(panes)) {
    addKey(window, "F6", 1);
    addKey(window, "Ctrl+Tab", 1);
    addKey(window, "Shift+F6", -1);
    addKey(window, "Ctrl+Shift+Tab", -1);
}

void PaneFocus::addKey(QWidget& window, const char* key, int step) {
    auto* const shortcut = new QShortcut(QKeySequence(QString::fromLatin1(key)), &window);
    connect(shortcut, &QShortcut::activated, this, [this, step] { move(step); });
}

void PaneFocus::move(int step) {
    const auto hasFocus = [](const Pane& pane) {
        const QWidget* const focused = QApplication::focusWidget();
        return focused && (focused == pane.widget || pane.widget->isAncestorOf(focused));
    };
    const auto count = std::ssize(m_panes);
    const auto current = std::ranges::find_if(m_panes, hasFocus);
    auto index = current != m_panes.end() ? current - m_panes.begin() : step > 0 ? -1 : count;
    for (auto tries = count; tries > 0; --tries) {
        index = (index + step + count) % count;
        const Pane& pane = m_panes[static_cast<std::size_t>(index)];
        if (pane.widget->isVisible() && pane.focus())
            return;
    }
}

} // namespace veilkeep
