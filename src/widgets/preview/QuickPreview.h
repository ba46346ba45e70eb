#pragma once

#include "filelist/FilesViewController.h"
#include "widgets/preview/Previews.h"

#include <QObject>

#include <memory>

class QKeyEvent;
class QWidget;

namespace veilkeep {

// The quick preview panel: shows the selected items one after the other. Made for the main window, which
// lives longer; main thread.
class QuickPreview : public QObject {
    Q_OBJECT

public:
    QuickPreview(FilesViewController& files, Previews& previews, QWidget& mainWindow);
    ~QuickPreview() override;

    bool isVisible() const;
    void toggle(); // closed, or brought to the front for the selected items, from the first on
    void close();  // at once: the user leaves, or the window closes

signals:
    // Keys that the panel leaves to the files table: up, down, what hides and shows.
    void keyPressed(QKeyEvent* event);

private:
    class Panel;
    FilesViewController& m_files;
    Previews& m_previews;
    QWidget& m_mainWindow;
    std::unique_ptr<Panel> m_panel; // made for its first use
};

} // namespace veilkeep
