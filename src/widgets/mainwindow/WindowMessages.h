#pragma once

#include "groups/GroupViewController.h"
#include "widgets/controls/MessageBar.h"

#include <QPointer>
#include <QWidget>

#include <set>
#include <string>

namespace veilkeep {

// Lasting messages above the files table: lists that could not be saved, items that stayed visible, what
// searches found. None is owned; main thread.
class WindowMessages : public QWidget {
    Q_OBJECT

public:
    WindowMessages(FilesViewController& files, GroupViewController& groups, QWidget* parent = nullptr);

signals:
    void itemsShown(); // and selected: the focus is to go to the files table

private:
    struct Found {
        std::set<std::string> directories;
        std::uint64_t items = 0, unreadable = 0;
        WorkerError error = WorkerError::Success;
    };

    // The bar with that text, or none for an empty one; the bar where it was made anew.
    MessageBar* put(QPointer<MessageBar>& bar, MessageBar::Kind kind, const QString& text);
    void showSaveTrouble();
    void showLeftVisible();
    void selectLeftVisible();
    void restoreEnded(const std::string& directory, const RestoreSummary& summary);
    static QString foundText(const Found& found);

    FilesViewController& m_files;
    GroupViewController& m_groups;
    QPointer<MessageBar> m_listTrouble, m_groupsTrouble, m_leftVisible, m_restored;
    Found m_found; // since the message was put away
};

} // namespace veilkeep
