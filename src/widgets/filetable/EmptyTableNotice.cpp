#include "widgets/filetable/EmptyTableNotice.h"

#include "widgets/controls/RowControls.h"

#include <QEvent>
#include <QVBoxLayout>

namespace veilkeep {

EmptyTableNotice::EmptyTableNotice(FilesViewController& files, QWidget* parent)
    : QWidget(parent), m_files(files), m_text(this), m_button(this) {
    m_text.setTextFormat(Qt::PlainText);
    m_text.setAlignment(Qt::AlignCenter);
    m_text.setWordWrap(true);
    m_text.setForegroundRole(QPalette::WindowText); // not that of the table around it
    auto* const layout = new QVBoxLayout(this);
    layout->addStretch();
    layout->addWidget(&m_text);
    layout->addSpacing(12);
    layout->addWidget(&m_button, 0, Qt::AlignHCenter);
    layout->addStretch();
    connect(&m_button, &QPushButton::clicked, this, &EmptyTableNotice::giveHelp);
    chooseColor();
    update();
}

void EmptyTableNotice::update() {
    const FilterController& filter = m_files.filterController();
    if (!filter.searchText().isEmpty())
        say(tr("No items match “%1”.").arg(filter.searchText()), Help::ClearSearch);
    else if (filter.showOnlyInconsistent())
        say(tr("Nothing is broken. All items are where they should be."), Help::None);
    else if (filter.showOnlyHidden())
        say(tr("No items are hidden."), Help::ShowAll);
    else if (filter.showOnlyVisible())
        say(tr("No items are visible."), Help::ShowAll);
    else
        say(tr("Drop files and folders here"), Help::Add);
}

void EmptyTableNotice::say(const QString& text, Help help) {
    m_text.setText(text);
    m_help = help;
    m_button.setVisible(help != Help::None);
    switch (help) {
    case Help::None:
        break;
    case Help::Add:
        m_button.setText(tr("Add Items…"));
        break;
    case Help::ClearSearch:
        m_button.setText(tr("Clear Search"));
        break;
    case Help::ShowAll:
        m_button.setText(tr("Show All Items"));
        break;
    }
}

void EmptyTableNotice::giveHelp() {
    switch (m_help) {
    case Help::None:
        break;
    case Help::Add:
        emit addRequested();
        break;
    case Help::ClearSearch:
        m_files.filterController().setSearchText({});
        break;
    case Help::ShowAll:
        m_files.filterController().setShowAll(true);
        break;
    }
}

void EmptyTableNotice::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        chooseColor();
}

void EmptyTableNotice::chooseColor() {
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, secondaryTextColor(palette()));
    m_text.setPalette(colors);
}

} // namespace veilkeep
