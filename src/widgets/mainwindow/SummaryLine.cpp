#include "widgets/mainwindow/SummaryLine.h"

#include "widgets/controls/RowControls.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QStringList>

namespace veilkeep {
namespace {

constexpr int lineHeight = 41;

} // namespace

SummaryLine::SummaryLine(FilesViewController& files, FileListActions& actions, QWidget* parent)
    : Strip(Line::Top, parent),
      m_files(files),
      m_actions(actions),
      m_text(new ElidedLabel(this)),
      m_label(new QLabel(tr("Selection"), this)),
      m_switch(new OnOffSwitch(this)) {
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(14, 0, 14 - focusRingWidth, 0); // the switch lies below those of the rows
    layout->setSpacing(12);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_label);
    layout->addWidget(m_switch);
    setMinimumHeight(lineHeight);
    m_label->setTextFormat(Qt::PlainText);
    m_text->setAccessibleDescription(tr("Summary"));
    m_switch->setAccessibleName(tr("Hide Selected Items"));
    m_switch->setToolTip(tr("Hides the selected items, or shows them again"));
    colour();

    m_update.setSingleShot(true);
    connect(&m_update, &QTimer::timeout, this, &SummaryLine::update);
    const auto updateSoon = [this] { m_update.start(0); };
    connect(&files.filesController(), &FilesController::arrangedObjectsChanged, this, updateSoon);
    connect(&files.filesController(), &FilesController::selectionChanged, this, updateSoon);
    connect(&files.files(), &FileList::fileChanged, this, updateSoon);
    connect(&files.hideOperations(), &HideOperations::batchRunningChanged, this, [this](bool isRunning) {
        m_isBatchRunning = isRunning;
        m_update.start(0);
    });
    connect(m_switch, &OnOffSwitch::switched, &files, &FilesViewController::switchOnOff);
    connect(m_switch, &OnOffSwitch::switched, this, updateSoon);
    update();
}

QString SummaryLine::text(const Counts& counts) {
    QStringList parts{counts.items == 1 ? tr("1 item") : tr("%Ln items", nullptr, int(counts.items))};
    if (counts.hidden > 0)
        parts << tr("%Ln hidden", nullptr, int(counts.hidden));
    if (counts.broken > 0)
        parts << tr("%Ln broken", nullptr, int(counts.broken));
    return parts.join(QStringLiteral(" · "));
}

void SummaryLine::update() {
    if (!isVisible())
        return;
    Counts counts;
    for (const ListedFile& file : m_files.filesController().arrangedObjects()) {
        ++counts.items;
        counts.hidden += file->state() == File::Hidden ? 1 : 0;
        counts.broken += file->state() == File::Broken ? 1 : 0;
    }
    m_text->setText(text(counts));
    updateSwitch();
}

void SummaryLine::updateSwitch() {
    if (m_isBatchRunning)
        return;
    const bool isAnySelected = m_files.firstSelectedFile() != nullptr;
    m_switch->setEnabled(isAnySelected);
    m_switch->setValue(isAnySelected ? m_actions.switchValue() : int(OnOffSwitch::Off));
}

void SummaryLine::colour() {
    QPalette faint = palette();
    faint.setColor(QPalette::WindowText, secondaryTextColor(palette()));
    for (QLabel* const label : std::initializer_list<QLabel*>{m_text, m_label})
        label->setPalette(faint);
}

void SummaryLine::showEvent(QShowEvent* event) {
    Strip::showEvent(event);
    update();
}

void SummaryLine::changeEvent(QEvent* event) {
    Strip::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        colour();
}

} // namespace veilkeep
