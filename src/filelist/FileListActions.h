#pragma once

#include "filelist/FilesViewController.h"
#include "platform/Applications.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace veilkeep {

// What users do with selected items beside hiding and removing them: opening, showing in the file manager,
// Open With, sorting; and which menu items, titles and tool tips there are. Hidden items are never opened or
// shown. Owned by the program's wiring; main thread.
class FileListActions : public QObject {
    Q_OBJECT

public:
    // Neither is owned. Without applications nothing can be opened.
    FileListActions(FilesViewController& files, Alerts& alerts, Applications* applications);

    // One item of the Open With submenu.
    struct OpenWithItem {
        enum class Kind { Application, Separator, None, Other };
        Kind kind = Kind::Application;
        QString title = {};
        InstalledApplication application = {};
    };
    std::vector<OpenWithItem> openWithMenuItemForFile(const std::string& path) const;

    struct Item {
        bool isEnabled = true;
        QString title = {}; // null: stays as it is
        QString toolTip = {};
    };
    Item validateMenuItem(int tag, const QString& currentGroupName) const; // 103 to 106; others are enabled
    Item validateToolbarItem(int tag) const;                               // 489

    enum class RowPart { Switch, Reveal, Elsewhere };
    QString toolTipFor(const File& file, RowPart part) const;

    // Selects the row where it was not selected, and answers the value of the selection's switch: 0 off, 1
    // on, 2 mixed, also for a row outside of the table.
    int menuState(std::ptrdiff_t row);
    void menuSwitchOnOff();
    int switchValue() const; // of the selected items

    enum class SortKey { Name, Place, Size, State };
    void sort(SortKey key, bool ascending); // the list itself

public slots:
    void openFileAction();
    void openFileInFinder() { openFileAction(); }
    void menuRevealFileInFinder();
    void openSelectedFileWithApplication(const QString& identifier);
    void hideSelected();
    void unhideSelected();

private:
    FilesViewController& m_files;
    Alerts& m_alerts;
    Applications* m_applications;
    std::ptrdiff_t m_contextMenuSelectedItem = -1;
};

} // namespace veilkeep
