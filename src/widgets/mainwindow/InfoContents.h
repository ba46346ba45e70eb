#pragma once

#include "widgets/mainwindow/InfoFacts.h"
#include "widgets/mainwindow/WrappedText.h"

#include <QIcon>
#include <QImage>
#include <QLabel>
#include <QWidget>

#include <array>

class QGridLayout;

namespace veilkeep {

// The image of what is selected, in a frame. Main thread.
class PreviewFrame : public QWidget {
    Q_OBJECT

public:
    explicit PreviewFrame(QWidget* parent = nullptr);

    void setImage(const QImage& image, const QIcon& otherwise); // a null image: the icon
    void setBadge(const QIcon& badge);                          // in its corner; null for none

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage m_image;
    QIcon m_icon, m_badge;
};

// Image, name and rows of the information pane. Main thread.
class InfoContents : public QWidget {
    Q_OBJECT

public:
    explicit InfoContents(QWidget* parent = nullptr);

    PreviewFrame& preview() const { return *m_preview; }
    void setFacts(const InfoFacts& facts);
    void setFactsOnDisk(const FactsOnDisk& facts);
    void setDatesShown(bool areShown);
    void takeFocus();

    enum Row { State, Size, Created, Modified, Where, Group, RowCount };
    QString value(Row row) const { return m_rows[row].value->toPlainText(); }

protected:
    void changeEvent(QEvent* event) override;

private:
    struct Shown {
        QLabel* title;
        WrappedText* value;
    };
    void addRow(QGridLayout& grid, Row row, const QString& title);
    void setText(WrappedText& value, const QString& text);
    void colour();

    PreviewFrame* m_preview;
    WrappedText* m_name;
    std::array<Shown, RowCount> m_rows{};
};

} // namespace veilkeep
