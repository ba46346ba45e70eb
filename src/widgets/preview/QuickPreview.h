#pragma once

#include "filelist/FilesViewController.h"
#include "widgets/preview/Previews.h"

#include <QObject>
#include <QSize>

#include <memory>

class QKeyEvent;
class QWidget;

namespace veilkeep {

class QuickPanel;

// The quick preview panel: shows the selected items one after the other. Made for the main window, which
// lives longer; main thread.
class QuickPreview : public QObject {
    Q_OBJECT

public:
    QuickPreview(FilesViewController& files, Previews& previews, QWidget& mainWindow);
    ~QuickPreview() override;

    bool isVisible() const;
    void toggle(); // closed, or brought to the front for the selected items, from the first on
    void close();  // at once: the user leaves, or the window closes; nothing of an item is kept

    QWidget* panel() const; // null while it is closed

signals:
    // Keys that the panel leaves to the files table: up, down, what hides and shows.
    void keyPressed(QKeyEvent* event);

    // The item on view is to be opened with its application. It is not hidden.
    void openRequested(const veilkeep::ListedFile& file);

private:
    void reload();

    FilesViewController& m_files;
    Previews& m_previews;
    QWidget& m_mainWindow;
    std::unique_ptr<QuickPanel> m_panel; // while it is open
    QSize m_size;                        // that the user gave it
};

} // namespace veilkeep
