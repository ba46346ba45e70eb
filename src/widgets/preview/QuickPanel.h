#pragma once

#include "filelist/FileList.h"
#include "widgets/preview/Previews.h"
#include "widgets/preview/QuickContent.h"
#include "widgets/preview/WorkQueue.h"

#include <QWidget>

#include <memory>
#include <vector>

class QAbstractButton;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QStackedWidget;

namespace veilkeep {

class ElidedLabel;
class Mailbox;
class PictureView;
class QuickFacts;

// The window of the quick preview: one item at a time, loaded on another thread. Main thread.
class QuickPanel : public QWidget {
    Q_OBJECT

public:
    QuickPanel(FileList& files, Previews& previews, QWidget& mainWindow); // none is owned
    ~QuickPanel() override;

    // From the first on, but where the item on view is among them.
    void setItems(std::vector<ListedFile> items);

    void forget(); // nothing of an item stays, nothing more is loaded

signals:
    void closeAsked();
    void keyPressed(QKeyEvent* event);
    void openRequested(const veilkeep::ListedFile& file);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void layOut();
    QAbstractButton* arrowButton(Qt::ArrowType arrow, const QString& name);
    ListedFile current() const; // null: there is none
    void showItem(std::size_t index);
    void goBy(int step);
    void turnPage(int step);
    void load(int page);
    void loaded(const QuickContent& content);
    void showContent();
    void showText(const QuickContent& content);
    void updateTexts();
    ImageWish wishFor(int page) const;

    FileList& m_files;
    Previews& m_previews;
    std::vector<ListedFile> m_items;
    std::size_t m_index = 0;
    QuickContent m_content;
    bool m_isLoaded = false;

    ElidedLabel* m_name;
    QLabel* m_details;
    QStackedWidget* m_pages;
    PictureView* m_picture;
    QPlainTextEdit* m_text;
    QuickFacts* m_facts;
    QAbstractButton* m_previous;
    QAbstractButton* m_next;
    QLabel* m_position;
    QAbstractButton* m_previousPage;
    QAbstractButton* m_nextPage;
    QLabel* m_page;
    QPushButton* m_open;

    std::shared_ptr<Mailbox> m_mailbox;
    std::shared_ptr<WorkStop> m_load; // that is under way; null: none
    WorkQueue m_queue{2};             // ends first
};

} // namespace veilkeep
