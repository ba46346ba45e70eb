#pragma once

#include "filelist/FilesViewController.h"

#include <QLabel>
#include <QPushButton>
#include <QWidget>

namespace veilkeep {

// A button that stands alone, with more room around its text than among others.
class RoomyButton : public QPushButton {
public:
    using QPushButton::QPushButton;
    QSize sizeHint() const override { return QPushButton::sizeHint() + QSize(24, 8); }
    QSize minimumSizeHint() const override { return sizeHint(); }
};

// Stands in the files table where it has no rows: says why, and offers what helps. Owned by FilesTableView;
// main thread.
class EmptyTableNotice : public QWidget {
    Q_OBJECT

public:
    EmptyTableNotice(FilesViewController& files, QWidget* parent);

    void update(); // to the list and the filter as they are

signals:
    void addRequested();

protected:
    void changeEvent(QEvent* event) override;

private:
    enum class Help { None, Add, ClearSearch, ShowAll };
    void say(const QString& text, Help help);
    void giveHelp();
    void chooseColor();

    FilesViewController& m_files;
    Help m_help = Help::None;
    QLabel m_text;
    RoomyButton m_button;
};

} // namespace veilkeep
