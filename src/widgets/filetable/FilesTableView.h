#pragma once

#include "filelist/FileListActions.h"
#include "widgets/preview/Previews.h"

#include <QTableView>

namespace veilkeep {

class FilesTableModel;

// The items that the filter lets through, one row each, with the buttons of its row. Its selection and that
// of FilesController are the same. Main thread.
class FilesTableView : public QTableView {
    Q_OBJECT

public:
    FilesTableView(FilesViewController& files, FileListActions& actions, Previews& previews,
                   QWidget* parent = nullptr);
    ~FilesTableView() override;

signals:
    void leftKeyPressed();             // the focus is to go to the group list
    void quickLookRequested();         // space
    void chooseApplicationRequested(); // "Other…" of Open With

private:
    FilesViewController& m_files;
    FileListActions& m_actions;
    FilesTableModel* m_model = nullptr;
};

} // namespace veilkeep
