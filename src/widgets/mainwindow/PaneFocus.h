#pragma once

#include <QObject>
#include <QWidget>

#include <functional>
#include <vector>

namespace veilkeep {

// F6 and Ctrl+Tab take the focus from one pane of a window to the next, with Shift to the one before. Owned
// by the window; main thread.
class PaneFocus : public QObject {
    Q_OBJECT

public:
    struct Pane {
        QWidget* widget;             // lives as long as the window
        std::function<bool()> focus; // false: nothing in it takes it
    };

    PaneFocus(QWidget& window, std::vector<Pane> panes);

private:
    void addKey(QWidget& window, const char* key, int step);
    void move(int step); // to the next one that takes it

    std::vector<Pane> m_panes;
};

} // namespace veilkeep
