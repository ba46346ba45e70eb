#pragma once

#include "widgets/mainwindow/CommandActions.h"

#include <QWidget>

class QBoxLayout;
class QLineEdit;

namespace veilkeep {

// The toolbar of the main window with the search field. No QToolBar, whose standard icons, never shown here,
// would load Qt's plugins for every image format. Main thread.
class MainToolBar : public QWidget {
    Q_OBJECT

public:
    explicit MainToolBar(CommandActions& actions, QWidget* parent = nullptr); // not owned

    QLineEdit& searchField() const { return *m_searchField; }

signals:
    void leaveSearch(); // the focus is to go to the files table

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addButton(QBoxLayout& row, Command command, const QString& image);
    QLineEdit* makeSearchField();
    void nameButtons();

    CommandActions& m_actions;
    QLineEdit* m_searchField = nullptr;
};

} // namespace veilkeep
