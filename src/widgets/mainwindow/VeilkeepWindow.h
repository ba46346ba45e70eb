#pragma once

#include "filelist/FileListActions.h"
#include "groups/GroupViewController.h"
#include "widgets/mainwindow/Commands.h"
#include "widgets/preview/Previews.h"

#include <QMainWindow>

#include <memory>

class QAction;

namespace veilkeep {

// What the main window shows and works with. Nothing of it is owned; all of it outlives the window.
struct VeilkeepWindowParts {
    FilesViewController& files;
    GroupViewController& groups;
    FileListActions& actions;
    Previews& previews;
    UserDefaults& defaults;
    CommandTarget& commands;
};

// The main window: groups, items, information on what is selected. It decides nothing. Owned by the
// application; main thread.
class VeilkeepWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit VeilkeepWindow(const VeilkeepWindowParts& parts);
    ~VeilkeepWindow() override;

    void validateCommands();                // all menu and toolbar items anew
    QAction* action(Command command) const; // null where there is none

    void toggleInfoView();
    bool isInfoViewShown() const;
    void focusSearch();
    void focusFiles();
    void toggleQuickLook();
    void closePanels(); // quick preview, open menus: the window is about to go

signals:
    void closeAsked(); // by the user; the window stays until somebody hides it
    void infoViewStateChangedTo(bool isShown);
    void itemsDropped();               // into the table
    void chooseApplicationRequested(); // "Other…" of Open With

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    class Private;
    std::unique_ptr<Private> m_private;
};

} // namespace veilkeep
