#pragma once

#include "filelist/FileListActions.h"

#include <QMenu>

#include <functional>

namespace veilkeep {

// What can be done with the selected items, made for one showing. Main thread.
class FilesContextMenu : public QMenu {
    Q_OBJECT

public:
    FilesContextMenu(FilesViewController& files, FileListActions& actions, std::ptrdiff_t row,
                     const QString& currentGroupName, QWidget* parent);

signals:
    void quickLookRequested();
    void chooseApplicationRequested();

private:
    QAction* add(const QString& title, std::function<void()> act);
    void addOpenWith();
    void addSwitch(int value);

    FilesViewController& m_files;
    FileListActions& m_actions;
    const QString m_currentGroupName;
};

} // namespace veilkeep
