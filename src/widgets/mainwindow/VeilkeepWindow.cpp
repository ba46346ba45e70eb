#include "widgets/mainwindow/VeilkeepWindow.h"

#include "core/log/Log.h"
#include "core/storage/DefaultsKeys.h"
#include "filelist/Texts.h"
#include "widgets/filetable/FilesTableView.h"
#include "widgets/grouplist/GroupPanel.h"
#include "widgets/mainwindow/CommandActions.h"
#include "widgets/mainwindow/FilterBinding.h"
#include "widgets/mainwindow/InfoPane.h"
#include "widgets/mainwindow/LineSplitter.h"
#include "widgets/mainwindow/MainMenu.h"
#include "widgets/mainwindow/MainToolBar.h"
#include "widgets/mainwindow/PaneFocus.h"
#include "widgets/mainwindow/Strip.h"
#include "widgets/mainwindow/SummaryLine.h"
#include "widgets/mainwindow/WindowMessages.h"
#include "widgets/mainwindow/WindowPlace.h"
#include "widgets/preview/QuickPreview.h"

#include <QApplication>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenuBar>
#include <QScreen>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

#include <utility>

namespace veilkeep {
namespace {

constexpr QSize usualSize{1120, 700};
constexpr QSize smallestSize{640, 400};
constexpr QSize roomForFrame{16, 48}; // of which nothing is known before the window is seen
constexpr int usualGroupsWidth = 235;
constexpr int usualInfoWidth = 251;

QList<QRect> visibleAreas() {
    QList<QRect> areas{QGuiApplication::primaryScreen()->availableGeometry()};
    for (const QScreen* const screen : QGuiApplication::screens())
        areas << screen->availableGeometry();
    return areas;
}

// What the layouts need, and some more.
class Panes : public QWidget {
public:
    using QWidget::QWidget;
    QSize minimumSizeHint() const override { return QWidget::minimumSizeHint().expandedTo(smallestSize); }
};

// As the menu key does, which not every keyboard has.
void openContextMenu() {
    QWidget* const focused = QApplication::focusWidget();
    if (!focused)
        return;
    const QPoint place = focused->rect().center();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, place, focused->mapToGlobal(place));
    QApplication::sendEvent(focused, &event);
}

} // namespace

class VeilkeepWindow::Private : public QObject {
public:
    Private(VeilkeepWindow& window, const VeilkeepWindowParts& parts);

    void validateSoon() { m_validation.start(0); }
    void setInfoShown(bool isShown);
    void keepPlace();
    bool eventFilter(QObject* watched, QEvent* event) override; // of the window's handle

    VeilkeepWindow& m_window;
    const VeilkeepWindowParts m_parts;
    CommandActions m_actions;
    QTimer m_validation; // one for many changes
    MainToolBar* m_toolBar;
    LineSplitter* m_splitter;
    GroupPanel* m_groupPanel;
    FilesTableView* m_table = nullptr;
    InfoPane* m_info;
    std::unique_ptr<QuickPreview> m_quickPreview; // made for its first use

private:
    QWidget* makeCentre();
    void connectPanes();
    void connectValidation();
    void restorePlace();
    void learnFrame();
    void setWidths(int groups, int info);
    void readWidths();
    void keep(const char* key, const Value& value);

    bool m_isToBeCentred = false; // once its frame is known
    QMargins m_frame;             // while it is not maximized
    int m_groupsWidth = usualGroupsWidth;
    int m_infoWidth = usualInfoWidth;
};

// Tab goes from pane to pane in the order in which they are made.
VeilkeepWindow::Private::Private(VeilkeepWindow& window, const VeilkeepWindowParts& parts)
    : m_window(window),
      m_parts(parts),
      m_actions(parts.commands),
      m_toolBar(new MainToolBar(m_actions, &window)),
      m_splitter(new LineSplitter(&window)),
      m_groupPanel(new GroupPanel(parts.groups, parts.files, m_splitter)) {
    window.setWindowTitle(applicationName());
    window.setContextMenuPolicy(Qt::NoContextMenu);
    auto* const menu = new MainMenu(*window.menuBar(), m_actions, parts.files, parts.groups, parts.actions);
    menu->setParent(this);
    connect(menu, &MainMenu::chooseApplicationRequested, &window,
            &VeilkeepWindow::chooseApplicationRequested);

    m_splitter->addWidget(m_groupPanel);
    m_splitter->addWidget(makeCentre());
    m_info = new InfoPane(parts.files, parts.groups, parts.previews, m_splitter);
    m_splitter->addWidget(m_info);
    m_splitter->orderPanes();
    m_splitter->handle(1)->setAccessibleName(VeilkeepWindow::tr("Width of the groups"));
    m_splitter->handle(2)->setAccessibleName(VeilkeepWindow::tr("Width of the info pane"));
    m_splitter->setStretchFactor(0, 0);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setStretchFactor(2, 0);
    auto* const panes = new Panes(&window);
    auto* const layout = new QVBoxLayout(panes);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_toolBar);
    layout->addWidget(m_splitter, 1);
    window.setCentralWidget(panes);
    connectPanes();
    connectValidation();
    restorePlace();
}

QWidget* VeilkeepWindow::Private::makeCentre() {
    auto* const centre = new QWidget(m_splitter);
    auto* const layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto* const strip = new Strip(Strip::Line::Bottom, centre);
    auto* const stripLayout = new QHBoxLayout(strip);
    stripLayout->setContentsMargins(14, 10, 14, 11);
    auto* const filterBar = new FilterBar(strip);
    stripLayout->addWidget(filterBar);
    stripLayout->addStretch(1);
    auto* const binding =
        new FilterBinding(m_parts.files.filterController(), *filterBar, m_toolBar->searchField());
    binding->setParent(this);

    auto* const messages = new WindowMessages(m_parts.files, m_parts.groups, centre);
    m_table = new FilesTableView(m_parts.files, m_parts.actions, m_parts.previews, centre);
    auto* const summary = new SummaryLine(m_parts.files, m_parts.actions, centre);
    for (QWidget* const part : std::initializer_list<QWidget*>{strip, messages, m_table, summary})
        layout->addWidget(part);
    layout->setStretchFactor(m_table, 1);
    connect(messages, &WindowMessages::itemsShown, &m_window, &VeilkeepWindow::focusFiles);
    return centre;
}

void VeilkeepWindow::Private::connectPanes() {
    connect(m_toolBar, &MainToolBar::leaveSearch, &m_window, &VeilkeepWindow::focusFiles);
    connect(m_groupPanel, &GroupPanel::rightKeyPressed, &m_window, &VeilkeepWindow::focusFiles);
    connect(m_table, &FilesTableView::leftKeyPressed, m_groupPanel, &GroupPanel::focusGroups);
    connect(m_table, &FilesTableView::quickLookRequested, &m_window, &VeilkeepWindow::toggleQuickLook);
    connect(m_table, &FilesTableView::itemsDropped, &m_window, &VeilkeepWindow::itemsDropped);
    connect(m_table, &FilesTableView::addRequested, this, [this] { m_actions.run(Command::AddFiles); });
    m_table->setGroupName([this] { return QString::fromStdString(m_parts.groups.currentGroupName()); });
    m_groupPanel->setEditingOffered(m_parts.commands.exists(Command::EditGroup));
    connect(m_table, &FilesTableView::chooseApplicationRequested, &m_window,
            &VeilkeepWindow::chooseApplicationRequested);
    const auto always = [](auto focus) {
        return [focus] {
            focus();
            return true;
        };
    };
    new PaneFocus(m_window, {
                                {m_toolBar, always([this] { m_window.focusSearch(); })},
                                {m_groupPanel, always([this] { m_groupPanel->focusGroups(); })},
                                {m_table, always([this] { m_window.focusFiles(); })},
                                {m_info, [this] { return m_info->takeFocus(); }},
                            });
    connect(new QShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F10), &m_window), &QShortcut::activated,
            &openContextMenu);
    m_table->setFocus();
}

void VeilkeepWindow::Private::connectValidation() {
    m_validation.setSingleShot(true);
    connect(&m_validation, &QTimer::timeout, &m_actions, qOverload<>(&CommandActions::validate));
    const auto soon = [this] { validateSoon(); };
    connect(&m_parts.files.filesController(), &FilesController::selectionChanged, this, soon);
    connect(&m_parts.files.files(), &FileList::fileChanged, this, soon);
    connect(&m_parts.files.filterController(), &FilterController::showModeChanged, this, soon);
    connect(&m_parts.files.hideOperations(), &HideOperations::batchRunningChanged, this, soon);
    connect(&m_parts.groups, &GroupViewController::currentGroupChanged, this, soon);
    connect(&m_parts.groups, &GroupViewController::groupsChanged, this, soon);
}

void VeilkeepWindow::Private::restorePlace() {
    const auto kept =
        WindowPlace::fromText(m_parts.defaults.string(defaultsKey::windowGeometry).value_or(""));
    const QList<QRect> areas = visibleAreas();
    m_isToBeCentred = !kept || !canBeReached(*kept, areas);
    const QSize size = kept ? kept->frame.size() : usualSize;
    const QSize fitting = size.boundedTo(areas.first().size() - roomForFrame);
    const QRect middle = placeInMiddle(fitting, {}, areas.first());
    m_window.resize(m_isToBeCentred ? fitting : size);
    m_window.move(m_isToBeCentred ? middle.topLeft() : kept->frame.topLeft()); // of the frame
    if (kept && kept->isMaximized)
        m_window.setWindowState(Qt::WindowMaximized);
    if (const auto widths =
            widthsFromText(m_parts.defaults.string(defaultsKey::windowSplitter).value_or(""), 2)) {
        m_groupsWidth = widths->at(0);
        m_infoWidth = widths->at(1);
    }
    m_info->setVisible(!m_parts.defaults.boolean(defaultsKey::infoPaneHidden).value_or(false));
    setWidths(m_groupsWidth, m_infoWidth);
}

bool VeilkeepWindow::Private::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Expose && m_window.windowHandle()->isExposed())
        learnFrame();
    return QObject::eventFilter(watched, event);
}

// The window manager has given the window its frame by now.
void VeilkeepWindow::Private::learnFrame() {
    if (m_window.isMaximized())
        return;
    m_frame = m_window.windowHandle()->frameMargins();
    if (std::exchange(m_isToBeCentred, false))
        m_window.setGeometry(placeInMiddle(m_window.size(), m_frame, visibleAreas().first()));
}

void VeilkeepWindow::Private::setWidths(int groups, int info) {
    const int lines = 2 * m_splitter->handleWidth();
    m_splitter->setSizes({groups, std::max(1, m_window.width() - groups - info - lines), info});
}

void VeilkeepWindow::Private::readWidths() {
    const QList<int> sizes = m_splitter->sizes();
    if (sizes[0] > 0)
        m_groupsWidth = sizes[0];
    if (sizes[2] > 0)
        m_infoWidth = sizes[2];
}

void VeilkeepWindow::Private::setInfoShown(bool isShown) {
    readWidths();
    m_info->setVisible(isShown);
    setWidths(m_groupsWidth, m_infoWidth);
    keep(defaultsKey::infoPaneHidden, !isShown);
    emit m_window.infoViewStateChangedTo(isShown);
    m_actions.validate();
}

void VeilkeepWindow::Private::keepPlace() {
    readWidths();
    const bool isMaximized = m_window.isMaximized();
    const QRect within = isMaximized ? m_window.normalGeometry() : m_window.geometry();
    const QRect frame = within.translated(-m_frame.left(), -m_frame.top());
    keep(defaultsKey::windowGeometry, WindowPlace{frame, isMaximized}.text());
    keep(defaultsKey::windowSplitter, textOfWidths({m_groupsWidth, m_infoWidth}));
    if (const auto stored = m_parts.defaults.synchronize(); !stored)
        logError("The place of the window could not be kept", stored.error());
}

void VeilkeepWindow::Private::keep(const char* key, const Value& value) {
    if (m_parts.defaults.value(key) != value)
        m_parts.defaults.set(key, value);
}

VeilkeepWindow::VeilkeepWindow(const VeilkeepWindowParts& parts)
    : m_private(std::make_unique<Private>(*this, parts)) {}

VeilkeepWindow::~VeilkeepWindow() {
    delete takeCentralWidget(); // while what it works with is there
}

void VeilkeepWindow::validateCommands() {
    m_private->m_actions.validate();
}

QAction* VeilkeepWindow::action(Command command) const {
    return m_private->m_actions.action(command);
}

void VeilkeepWindow::toggleInfoView() {
    m_private->setInfoShown(!isInfoViewShown());
}

bool VeilkeepWindow::isInfoViewShown() const {
    return !m_private->m_info->isHidden();
}

void VeilkeepWindow::focusSearch() {
    m_private->m_toolBar->searchField().setFocus(Qt::ShortcutFocusReason);
    m_private->m_toolBar->searchField().selectAll();
}

void VeilkeepWindow::focusFiles() {
    m_private->m_table->setFocus(Qt::ShortcutFocusReason);
}

void VeilkeepWindow::toggleQuickLook() {
    std::unique_ptr<QuickPreview>& preview = m_private->m_quickPreview;
    if (!preview) {
        preview =
            std::make_unique<QuickPreview>(m_private->m_parts.files, m_private->m_parts.previews, *this);
        connect(preview.get(), &QuickPreview::keyPressed, this,
                [this](QKeyEvent* event) { QCoreApplication::sendEvent(m_private->m_table, event); });
        connect(preview.get(), &QuickPreview::openRequested, this,
                [this](const ListedFile& file) { m_private->m_parts.actions.openFile(file); });
    }
    preview->toggle();
}

void VeilkeepWindow::closePanels() {
    if (m_private->m_quickPreview)
        m_private->m_quickPreview->close();
    constexpr int deepest = 16; // menus in menus
    for (int level = 0; level < deepest && QApplication::activePopupWidget(); ++level)
        QApplication::activePopupWidget()->close();
}

// A session that ends must not be held up.
void VeilkeepWindow::closeEvent(QCloseEvent* event) {
    event->setAccepted(qApp->isSavingSession());
    if (!event->isAccepted())
        emit closeAsked();
}

void VeilkeepWindow::hideEvent(QHideEvent* event) {
    QMainWindow::hideEvent(event);
    if (!event->spontaneous() && m_private)
        m_private->keepPlace();
}

// A dialog that has gone need not leave the window active.
bool VeilkeepWindow::event(QEvent* event) {
    if ((event->type() == QEvent::WindowUnblocked || event->type() == QEvent::Show) && m_private)
        m_private->validateSoon();
    if (event->type() == QEvent::Show && m_private)
        windowHandle()->installEventFilter(m_private.get());
    return QMainWindow::event(event);
}

void VeilkeepWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && m_private)
        m_private->validateSoon();
}

} // namespace veilkeep
