#include "widgets/mainwindow/InfoPane.h"

#include "format/ValueFormatting.h"
#include "widgets/controls/RowControls.h"
#include "widgets/images/ProgramImages.h"
#include "widgets/preview/Mailbox.h"

#include <QEvent>
#include <QScrollArea>
#include <QVBoxLayout>

namespace veilkeep {

InfoPane::InfoPane(FilesViewController& files, GroupViewController& groups, Previews& previews,
                   QWidget* parent)
    : QWidget(parent),
      m_files(files),
      m_groups(groups),
      m_previews(previews),
      m_icons(previews),
      m_nothing(new QLabel(tr("Nothing selected"), this)),
      m_mailbox(std::make_shared<Mailbox>(*this)) {
    setAccessibleName(SelectionTabValueTransformer::transformedValue());
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_nothing);
    m_nothing->setTextFormat(Qt::PlainText);
    m_nothing->setAlignment(Qt::AlignCenter);
    m_nothing->setWordWrap(true);
    setMinimumWidth(200);
    colour();

    m_update.setSingleShot(true);
    connect(&m_update, &QTimer::timeout, this, &InfoPane::update);
    connect(&files.filesController(), &FilesController::selectionChanged, this, &InfoPane::updateSoon);
    connect(&files.files(), &FileList::fileChanged, this, &InfoPane::fileChanged);
    connect(&groups, &GroupViewController::groupsChanged, this, &InfoPane::updateSoon);
    connect(&previews, &Previews::changed, this, [this](const ListedFile& file) {
        if (m_selected.size() == 1 && m_selected.front() == file)
            updatePreview();
    });
}

InfoPane::~InfoPane() {
    m_mailbox->close();
}

bool InfoPane::takeFocus() {
    if (!m_contents || m_selected.empty())
        return false;
    m_contents->takeFocus();
    return true;
}

void InfoPane::updateSoon() {
    if (isVisible())
        m_update.start(0);
}

void InfoPane::fileChanged(const ListedFile& file) {
    if (m_files.filesController().isSelected(file))
        updateSoon();
}

void InfoPane::update() {
    if (!isVisible())
        return;
    ++m_generation;
    FilesViewController::Files selected = m_files.getAllSelectedFiles();
    const bool isAnother = selected != m_selected;
    m_selected = std::move(selected);
    if (!m_selected.empty() && !m_contents)
        makeContents();
    m_nothing->setVisible(m_selected.empty());
    if (!m_contents)
        return;
    m_contents->parentWidget()->parentWidget()->setVisible(!m_selected.empty());
    if (m_selected.empty())
        return;
    const InfoFacts facts = infoFacts(m_selected, m_groups);
    m_contents->setFacts(facts);
    m_contents->preview().setBadge(programImage::named(facts.badge));
    if (isAnother)
        m_contents->setFactsOnDisk({facts.size, {}, {}}); // until they are read
    m_contents->setDatesShown(m_selected.size() == 1);
    updatePreview();
    if (m_selected.size() == 1)
        lookAt(m_selected.front());
}

void InfoPane::makeContents() {
    auto* const area = new QScrollArea(this);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    m_contents = new InfoContents;
    area->setWidget(m_contents);
    m_contents->setAutoFillBackground(false);
    area->viewport()->setAutoFillBackground(false);
    layout()->addWidget(area);
}

void InfoPane::updatePreview() {
    if (m_selected.size() == 1)
        return m_contents->preview().setImage(m_previews.preview(m_selected.front()),
                                              m_previews.typeIcon(m_selected.front()));
    m_icons.transformedValue(QByteArray(), this,
                             [this](const QImage& image) { m_contents->preview().setImage(image, {}); });
}

void InfoPane::lookAt(const ListedFile& file) {
    if (!m_work)
        m_work = std::make_unique<WorkQueue>(1);
    m_work->dropWaiting();
    const ItemToLookAt item{std::string(file->path()), file->size(), file->isFile()};
    const auto answer = [this, generation = m_generation](const FactsOnDisk& facts) {
        if (generation == m_generation && m_contents)
            m_contents->setFactsOnDisk(facts);
    };
    m_work->add({.run = [item, answer, mailbox = m_mailbox](const WorkStop&) {
        mailbox->post([answer, facts = factsOnDisk(item)] { answer(facts); });
    }});
}

void InfoPane::colour() {
    QPalette faint = palette();
    faint.setColor(QPalette::WindowText, secondaryTextColor(palette()));
    m_nothing->setPalette(faint);
}

void InfoPane::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    update();
}

void InfoPane::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        colour();
}

} // namespace veilkeep
