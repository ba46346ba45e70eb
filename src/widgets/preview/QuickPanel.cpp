#include "widgets/preview/QuickPanel.h"

#include "core/base/PathText.h"
#include "filelist/Texts.h"
#include "widgets/controls/ElidedLabel.h"
#include "widgets/preview/Mailbox.h"
#include "widgets/preview/PictureView.h"
#include "widgets/preview/QuickFacts.h"

#include <algorithm>
#include <utility>

#include <QCloseEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace veilkeep {
namespace {

constexpr QSize mostPixels{2560, 1600};
constexpr QSize usualSize{640, 520};
constexpr int sideMargin = 12;

QLabel* plainLabel(QWidget* parent) {
    auto* const label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    return label;
}

PreviewSubject subjectOf(const File& file) {
    return {.path = std::string(file.path()), .name = std::string(file.name()), .isFolder = !file.isFile()};
}

} // namespace

QuickPanel::QuickPanel(FileList& files, Previews& previews, QWidget& mainWindow)
    : QWidget(&mainWindow, Qt::Tool),
      m_files(files),
      m_previews(previews),
      m_name(new ElidedLabel(this)),
      m_details(plainLabel(this)),
      m_pages(new QStackedWidget(this)),
      m_picture(new PictureView),
      m_text(new QPlainTextEdit),
      m_facts(new QuickFacts),
      m_previous(arrowButton(Qt::LeftArrow, tr("Previous item"))),
      m_next(arrowButton(Qt::RightArrow, tr("Next item"))),
      m_position(plainLabel(this)),
      m_previousPage(arrowButton(Qt::UpArrow, tr("Previous page"))),
      m_nextPage(arrowButton(Qt::DownArrow, tr("Next page"))),
      m_page(plainLabel(this)),
      m_open(new QPushButton(tr("Open"), this)),
      m_mailbox(std::make_shared<Mailbox>(*this)) {
    setFocusPolicy(Qt::StrongFocus);
    layOut();
    connect(m_previous, &QAbstractButton::clicked, this, [this] { goBy(-1); });
    connect(m_next, &QAbstractButton::clicked, this, [this] { goBy(1); });
    connect(m_previousPage, &QAbstractButton::clicked, this, [this] { turnPage(-1); });
    connect(m_nextPage, &QAbstractButton::clicked, this, [this] { turnPage(1); });
    connect(m_open, &QAbstractButton::clicked, this, [this] { emit openRequested(current()); });
    connect(&m_files, &FileList::fileChanged, this, [this](const ListedFile& file) {
        if (file == current())
            load(m_content.page);
    });
    connect(&m_previews, &Previews::changed, this, [this](const ListedFile& file) {
        if (file == current() && m_pages->currentWidget() == m_facts)
            showContent();
    });
}

QuickPanel::~QuickPanel() {
    forget();
    m_mailbox->close();
}

void QuickPanel::layOut() {
    QFont bold = font();
    bold.setBold(true);
    m_name->setFont(bold);
    m_details->setForegroundRole(QPalette::PlaceholderText);
    m_text->setReadOnly(true);
    m_text->setFrameShape(QFrame::NoFrame);
    m_text->document()->setDocumentMargin(sideMargin);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_text->setAccessibleName(tr("Text of the item"));
    m_text->installEventFilter(this);
    m_open->installEventFilter(this);
    m_open->setAutoDefault(false);
    for (QWidget* const each :
         {static_cast<QWidget*>(m_facts), static_cast<QWidget*>(m_picture), static_cast<QWidget*>(m_text)})
        m_pages->addWidget(each);

    auto* const head = new QVBoxLayout;
    head->setContentsMargins(sideMargin, 10, sideMargin, 8);
    head->setSpacing(2);
    head->addWidget(m_name);
    head->addWidget(m_details);
    auto* const bar = new QHBoxLayout;
    bar->setContentsMargins(sideMargin, 8, sideMargin, 10);
    for (QWidget* const each : {static_cast<QWidget*>(m_previous), static_cast<QWidget*>(m_next),
                                static_cast<QWidget*>(m_position)})
        bar->addWidget(each);
    bar->addStretch();
    for (QWidget* const each : {static_cast<QWidget*>(m_previousPage), static_cast<QWidget*>(m_nextPage),
                                static_cast<QWidget*>(m_page)})
        bar->addWidget(each);
    bar->addStretch();
    bar->addWidget(m_open);
    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->setSpacing(0);
    whole->addLayout(head);
    whole->addWidget(m_pages, 1);
    whole->addLayout(bar);
    setMinimumSize(360, 280);
    resize(usualSize.boundedTo(screen()->availableSize()));
}

QAbstractButton* QuickPanel::arrowButton(Qt::ArrowType arrow, const QString& name) {
    auto* const button = new QToolButton(this);
    button->setArrowType(arrow);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setAccessibleName(name);
    button->setToolTip(name);
    button->installEventFilter(this);
    return button;
}

ListedFile QuickPanel::current() const {
    return m_index < m_items.size() ? m_items[m_index] : nullptr;
}

void QuickPanel::setItems(std::vector<ListedFile> items) {
    const ListedFile before = current();
    m_items = std::move(items);
    const auto found = std::ranges::find(m_items, before);
    if (before && found != m_items.end()) {
        m_index = static_cast<std::size_t>(found - m_items.begin());
        updateTexts();
    } else {
        showItem(0);
    }
}

void QuickPanel::showItem(std::size_t index) {
    m_index = index;
    m_content = {};
    m_isLoaded = false;
    if (const ListedFile file = current())
        m_content.image = m_previews.preview(file); // in the meantime
    load(0);
    showContent();
}

void QuickPanel::goBy(int step) {
    const std::size_t index = m_index + static_cast<std::size_t>(step);
    if (index < m_items.size())
        showItem(index);
}

void QuickPanel::turnPage(int step) {
    const int page = m_content.page + step;
    if (page >= 0 && page < m_content.pages)
        load(page);
}

ImageWish QuickPanel::wishFor(int page) const {
    const QSize pixels = (QSizeF(screen()->availableSize()) * devicePixelRatioF()).toSize();
    return {.bound = pixels.boundedTo(mostPixels), .page = page};
}

// What was being loaded before is given up.
void QuickPanel::load(int page) {
    if (m_load)
        m_load->stop();
    m_queue.dropWaiting();
    m_load = nullptr;
    const ListedFile file = current();
    if (!file)
        return;
    m_load = std::make_shared<WorkStop>();
    m_queue.add({[this, subject = subjectOf(*file), wish = wishFor(page), stop = m_load,
                  maker = m_previews.maker(), mailbox = m_mailbox](const WorkStop&) {
        const QuickContent content = quickContentOf(subject, *maker, wish, *stop);
        mailbox->post([this, content, stop] {
            if (stop == m_load)
                loaded(content);
        });
    }});
}

void QuickPanel::loaded(const QuickContent& content) {
    m_load = nullptr;
    m_content = content;
    m_isLoaded = true;
    showContent();
}

void QuickPanel::showContent() {
    updateTexts();
    const ListedFile file = current();
    if (!file) {
        m_facts->setMessage(tr("Nothing is selected"), {});
        m_pages->setCurrentWidget(m_facts);
    } else if (m_content.kind == QuickContent::Kind::Image) {
        m_picture->setImage(m_content.image);
        m_picture->setAccessibleName(tr("Picture of the item"));
        m_pages->setCurrentWidget(m_picture);
    } else if (m_content.kind == QuickContent::Kind::Text) {
        showText(m_content);
    } else {
        m_facts->setFacts(*file, m_previews.typeIcon(file), m_content);
        m_pages->setCurrentWidget(m_facts);
    }
}

void QuickPanel::showText(const QuickContent& content) {
    if (m_text->toPlainText() != content.text)
        m_text->setPlainText(content.text);
    m_pages->setCurrentWidget(m_text);
}

void QuickPanel::updateTexts() {
    const ListedFile file = current();
    const QString name = file ? shownPath(file->name()) : QString();
    setWindowTitle(file ? name : tr("Quick Preview"));
    m_name->setText(name);
    QStringList details;
    const bool showsFacts =
        m_content.kind == QuickContent::Kind::Facts || m_content.kind == QuickContent::Kind::Missing;
    if (file && m_isLoaded && !showsFacts)
        details = {m_content.type.comment, QuickFacts::sizeText(*file, m_content),
                   QuickFacts::stateText(*file)};
    if (m_content.isCut)
        details << tr("the beginning");
    details.removeAll(QString());
    m_details->setText(details.join(QStringLiteral(" · ")));
    const bool hasSeveral = m_items.size() > 1;
    const bool hasPages = m_content.pages > 1;
    m_position->setText(hasSeveral ? tr("%1 of %2").arg(m_index + 1).arg(m_items.size()) : QString());
    m_page->setText(hasPages ? tr("Page %1 of %2").arg(m_content.page + 1).arg(m_content.pages) : QString());
    m_previous->setVisible(hasSeveral);
    m_next->setVisible(hasSeveral);
    m_previous->setEnabled(m_index > 0);
    m_next->setEnabled(m_index + 1 < m_items.size());
    m_previousPage->setVisible(hasPages);
    m_nextPage->setVisible(hasPages);
    m_previousPage->setEnabled(m_content.page > 0);
    m_nextPage->setEnabled(m_content.page + 1 < m_content.pages);
    m_open->setEnabled(file && file->state() == File::Visible);
}

void QuickPanel::forget() {
    if (m_load)
        m_load->stop();
    m_load = nullptr;
    m_queue.dropWaiting();
    m_items.clear();
    m_content = {};
    m_picture->setImage({});
    m_text->clear();
}

void QuickPanel::keyPressEvent(QKeyEvent* event) {
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Escape:
        if (!event->isAutoRepeat())
            emit closeAsked();
        break;
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (isPlain)
            goBy((event->key() == Qt::Key_Right) == isLeftToRight() ? 1 : -1);
        else
            emit keyPressed(event);
        break;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        turnPage(event->key() == Qt::Key_PageDown ? 1 : -1);
        m_text->verticalScrollBar()->triggerAction(event->key() == Qt::Key_PageDown
                                                       ? QAbstractSlider::SliderPageStepAdd
                                                       : QAbstractSlider::SliderPageStepSub);
        break;
    case Qt::Key_Control:
    case Qt::Key_Shift:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
        break; // the key that they go with follows
    default:
        emit keyPressed(event);
    }
}

// Buttons and text keep what they need themselves.
bool QuickPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    auto* const keyEvent = static_cast<QKeyEvent*>(event);
    const bool isArrow = keyEvent->key() == Qt::Key_Left || keyEvent->key() == Qt::Key_Right;
    const bool isVertical = keyEvent->key() == Qt::Key_Up || keyEvent->key() == Qt::Key_Down;
    const bool isSpaceInText = watched == m_text && keyEvent->key() == Qt::Key_Space;
    if (!isArrow && !isSpaceInText && (!isVertical || watched == m_text))
        return QWidget::eventFilter(watched, event);
    keyPressEvent(keyEvent);
    return true;
}

// The owner decides.
void QuickPanel::closeEvent(QCloseEvent* event) {
    event->ignore();
    emit closeAsked();
}

void QuickPanel::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        showContent();
}

} // namespace veilkeep
