#pragma once

#include "filelist/FilesViewController.h"
#include "platform/Applications.h"

#include <QObject>
#include <QString>

#include <cstddef>
#include <string>
#include <vector>

namespace veilkeep {

// What users do with selected items beside hiding and removing them: opening, showing in the file manager,
// Open With, sorting; and which menu items, titles and tool tips there are. Hidden items are never opened or
// shown. Owned by the program's wiring; main thread.
class FileListActions : public QObject {
    Q_OBJECT

public:
    // None is owned. Without applications nothing can be opened.
    FileListActions(FilesViewController& files, Alerts& alerts, Applications* applications);

    // One item of the Open With submenu.
    struct OpenWithItem {
        enum class Kind { Application, Separator, None, Other };
        Kind kind = Kind::Application;
        QString title = {}; // as it is: a menu takes "&" for a mnemonic
        InstalledApplication application = {};

        bool operator==(const OpenWithItem&) const = default;
    };
    std::vector<OpenWithItem> openWithMenuItemForFile(const std::string& path) const;

    struct Item {
        bool isEnabled = true;
        QString title = {}; // null: stays as it is
        QString toolTip = {};
    };
    enum Tag { Open = 103, OpenWith = 104, Reveal = 105, Remove = 106, RemoveTool = 489 };
    Item validateMenuItem(int tag, const QString& currentGroupName) const; // 103 to 106; others are enabled
    Item validateToolbarItem(int tag) const;                               // 489

    enum class RowPart { Switch, Reveal, Elsewhere };
    QString toolTipFor(const File& file, RowPart part) const;

    // Selects the row where it was not selected, and answers the value of the selection's switch: 0 off, 1
    // on, 2 mixed, also for a row outside of the table.
    int menuState(std::ptrdiff_t row);
    void menuSwitchOnOff(); // of the selection: off where all of it is on, else on
    int switchValue() const;
    std::ptrdiff_t contextMenuSelectedItem() const { return m_contextMenuSelectedItem; } // -1: none yet

    using SortKey = veilkeep::SortKey;
    void sort(SortKey key, bool ascending) { m_files.sortFiles(key, ascending); } // the list itself

    void openFile(const ListedFile& file) { openEach({file}); } // selected or not

public slots:
    void openFileAction();
    void openFileInFinder() { openFileAction(); }
    void menuRevealFileInFinder();
    void openSelectedFileWithApplication(const QString& identifier);
    void hideSelected() { m_files.switchOnOff(1); }
    void unhideSelected() { m_files.switchOnOff(0); }

private:
    struct Failure {
        ListedFile file;
        Error error;
    };

    FilesViewController::Files selectedToOpen() const;
    void openEach(const FilesViewController::Files& files);
    Result<void> open(const std::string& path) const;
    void tell(const std::vector<Failure>& failures);

    FilesViewController& m_files;
    Alerts& m_alerts;
    Applications* m_applications;
    std::ptrdiff_t m_contextMenuSelectedItem = -1;
};

} // namespace veilkeep
