#pragma once

#include "groups/GroupViewController.h"
#include "widgets/mainwindow/InfoContents.h"
#include "widgets/preview/FileIconValueTransformer.h"
#include "widgets/preview/Previews.h"
#include "widgets/preview/WorkQueue.h"

#include <QLabel>
#include <QTimer>
#include <QWidget>

#include <cstdint>
#include <memory>

namespace veilkeep {

class Mailbox;

// Tells about the selected items. What is read from the disk is read on another thread, and only while the
// pane is shown. None is owned; main thread.
class InfoPane : public QWidget {
    Q_OBJECT

public:
    InfoPane(FilesViewController& files, GroupViewController& groups, Previews& previews,
             QWidget* parent = nullptr);
    ~InfoPane() override;

    bool takeFocus(); // false: nothing is selected

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void updateSoon();
    void update();
    void updatePreview();
    void makeContents();
    void lookAt(const ListedFile& file);
    void fileChanged(const ListedFile& file);
    void colour();

    FilesViewController& m_files;
    GroupViewController& m_groups;
    Previews& m_previews;
    FileIconValueTransformer m_icons;
    FilesViewController::Files m_selected;
    QLabel* m_nothing;
    InfoContents* m_contents = nullptr; // made for the first selection that is shown
    QTimer m_update;                    // one for many changes
    std::uint64_t m_generation = 0;     // answers to earlier questions are dropped
    std::shared_ptr<Mailbox> m_mailbox;
    std::unique_ptr<WorkQueue> m_work;
};

} // namespace veilkeep
