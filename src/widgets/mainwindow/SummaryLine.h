#pragma once

#include "filelist/FileListActions.h"
#include "widgets/controls/ElidedLabel.h"
#include "widgets/controls/OnOffSwitch.h"
#include "widgets/mainwindow/Strip.h"

#include <QLabel>
#include <QTimer>

namespace veilkeep {

// Below the files table: how much is shown, and the switch of the selected items. While a batch runs the
// switch stands apart from the selection. None is owned; main thread.
class SummaryLine : public Strip {
    Q_OBJECT

public:
    SummaryLine(FilesViewController& files, FileListActions& actions, QWidget* parent = nullptr);

    OnOffSwitch& selectionSwitch() const { return *m_switch; }

    struct Counts {
        qsizetype items = 0, hidden = 0, broken = 0;
    };
    static QString text(const Counts& counts);

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void update();
    void updateSwitch();
    void colour();

    FilesViewController& m_files;
    FileListActions& m_actions;
    ElidedLabel* m_text;
    QLabel* m_label;
    OnOffSwitch* m_switch;
    QTimer m_update; // one for many changes
    bool m_isBatchRunning = false;
};

} // namespace veilkeep
