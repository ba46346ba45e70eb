#pragma once

#include "filelist/FileListActions.h"
#include "groups/GroupViewController.h"
#include "widgets/mainwindow/CommandActions.h"

#include <QObject>

class QMenu;
class QMenuBar;

namespace veilkeep {

// The menu bar of the main window, which F10 opens and Escape leaves. Owned by the window; main thread.
class MainMenu : public QObject {
    Q_OBJECT

public:
    // None is owned.
    MainMenu(QMenuBar& bar, CommandActions& actions, FilesViewController& files, GroupViewController& groups,
             FileListActions& fileActions);

signals:
    void chooseApplicationRequested(); // "Other…" of Open With

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void open();
    QMenu* addMenu(const QString& title);
    void addSubmenu(QMenu& menu, const QString& title, std::initializer_list<Command> commands);
    void addOpenWith(QMenu& menu);
    void addMoveToGroup(QMenu& menu);
    void fillMoveToGroup(QMenu& menu);
    void fill(QMenu& menu, std::initializer_list<std::optional<Command>> commands); // nothing: a separator
    void assignAllMnemonics();

    QMenuBar& m_bar;
    CommandActions& m_actions;
    FilesViewController& m_files;
    GroupViewController& m_groups;
    FileListActions& m_fileActions;
};

} // namespace veilkeep
