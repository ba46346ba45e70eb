#include "widgets/dialogs/ItemPanel.h"

#include "core/base/PathText.h"
#include "core/environment/XdgDirectories.h"
#include "core/filesystem/ItemAtPath.h"
#include "filelist/Texts.h"
#include "format/ErrorText.h"
#include "widgets/controls/CheckBox.h"
#include "widgets/dialogs/FolderModel.h"
#include "widgets/dialogs/PlaceList.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>

#include <sys/stat.h>

#include <algorithm>

namespace veilkeep {
namespace {

bool leadsToFolder(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string nearestFolder(std::string path) {
    while (path.size() > 1 && !leadsToFolder(path))
        path = std::string(parentPath(path));
    return path;
}

std::string typedPath(const QString& text, const std::string& folder) {
    const std::string typed = QFile::encodeName(text).toStdString();
    if (typed == "~" || typed.starts_with("~/"))
        return cleanPath(homeDirectory() + typed.substr(1));
    return cleanPath(typed.starts_with('/') ? typed : joinPath(folder, typed));
}

} // namespace

ItemPanel::ItemPanel(const Wishes& wishes, QWidget* parent)
    : QDialog(parent),
      m_wishes(wishes),
      m_model(new FolderModel([this](const FolderEntry& entry) { return isWanted(entry); }, this)) {
    setWindowTitle(wishes.title);
    layOut();
    addKeys();
    connect(&m_reader, &FolderReader::done, this, &ItemPanel::showContents);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &ItemPanel::validate);
    connect(m_model, &QAbstractItemModel::modelReset, this, &ItemPanel::validate);
    resize(QSize(760, 500).boundedTo(screen()->availableSize()));
    m_choose->setDefault(true);
    m_list->setFocus();
}

void ItemPanel::layOut() {
    auto* const rows = new QVBoxLayout(this);
    rows->addWidget(makePathRow());
    auto* const columns = new QSplitter;
    columns->setChildrenCollapsible(false);
    m_places = new PlaceList;
    connect(m_places, &PlaceList::placeChosen, this, [this](const std::string& path) { showFolder(path); });
    columns->addWidget(m_places);
    columns->addWidget(makeList());
    columns->setStretchFactor(1, 1);
    columns->setSizes({170, 590});
    rows->addWidget(columns, 1);
    m_status = new QLabel;
    m_status->setTextFormat(Qt::PlainText);
    m_status->setWordWrap(true);
    m_status->hide();
    rows->addWidget(m_status);
    rows->addWidget(makeButtons());
}

QWidget* ItemPanel::makePathRow() {
    auto* const row = new QWidget;
    auto* const columns = new QHBoxLayout(row);
    columns->setContentsMargins({});
    m_up = new QToolButton;
    m_up->setIcon(style()->standardIcon(QStyle::SP_FileDialogToParent));
    m_up->setAccessibleName(tr("Enclosing Folder"));
    m_up->setToolTip(tr("Enclosing Folder"));
    connect(m_up, &QToolButton::clicked, this, &ItemPanel::goUp);
    m_path = new QLineEdit;
    m_path->setAccessibleName(tr("Place"));
    m_path->installEventFilter(this);
    columns->addWidget(m_up);
    columns->addWidget(m_path, 1);
    return row;
}

QWidget* ItemPanel::makeList() {
    m_list = new QListView;
    m_list->setAccessibleName(m_wishes.foldersOnly ? tr("Folders") : tr("Files and folders"));
    m_list->setModel(m_model);
    m_list->setUniformItemSizes(true);
    m_list->setSelectionMode(m_wishes.several ? QAbstractItemView::ExtendedSelection
                                              : QAbstractItemView::SingleSelection);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->installEventFilter(this);
    connect(m_list, &QListView::doubleClicked, this, &ItemPanel::openCurrent);
    return m_list;
}

QWidget* ItemPanel::makeButtons() {
    auto* const row = new QWidget;
    auto* const columns = new QHBoxLayout(row);
    columns->setContentsMargins({});
    m_hidden = new CheckBox(tr("Show hidden items"));
    connect(m_hidden, &QCheckBox::toggled, m_model, &FolderModel::setHiddenShown);
    auto* const box = new QDialogButtonBox;
    m_choose = box->addButton(m_wishes.button, QDialogButtonBox::AcceptRole);
    box->addButton(tr("Cancel"), QDialogButtonBox::RejectRole);
    connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    columns->addWidget(m_hidden);
    columns->addStretch(1);
    columns->addWidget(box);
    return row;
}

void ItemPanel::addKeys() {
    const auto add = [this](const QKeySequence& keys, auto action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    add(Qt::CTRL | Qt::Key_H, [this] { m_hidden->toggle(); });
    add(Qt::ALT | Qt::Key_Up, [this] { goUp(); });
    add(Qt::CTRL | Qt::Key_L, [this] {
        m_path->setFocus();
        m_path->selectAll();
    });
}

void ItemPanel::startAt(const std::string& path) {
    const std::string wanted = path.empty() ? homeDirectory() : cleanPath(path);
    const bool isItem = itemExistsAt(wanted) && !leadsToFolder(wanted);
    showFolder(nearestFolder(wanted), isItem ? std::string(lastPathComponent(wanted)) : std::string());
}

void ItemPanel::showFolder(const std::string& path, const std::string& selected) {
    m_folder = path;
    m_toSelect = selected;
    m_path->setText(shownPath(path));
    m_path->setModified(false);
    m_up->setEnabled(path != "/");
    m_places->setCurrentPlace(path);
    m_model->setEntries({});
    m_status->hide();
    m_reader.read(path);
}

void ItemPanel::showContents(const std::string& path, const FolderReader::Contents& contents) {
    if (path != m_folder)
        return;
    if (!contents) {
        m_status->setText(tr("This folder cannot be read: %1").arg(errorReason(contents.error())));
        m_status->show();
        return;
    }
    m_model->setEntries(*contents);
    selectName(m_toSelect);
}

bool ItemPanel::isWanted(const FolderEntry& entry) const {
    if (entry.isFolder)
        return true;
    return !m_wishes.foldersOnly && (!m_wishes.onlyFiles || m_wishes.onlyFiles(entry.name));
}

void ItemPanel::selectName(const std::string& name) {
    if (m_model->hasHidden(name))
        m_hidden->setChecked(true);
    const QModelIndex first = m_model->index(0, 0);
    if (const auto row = m_model->rowOf(name)) {
        m_list->setCurrentIndex(m_model->index(*row, 0));
        m_list->scrollTo(m_list->currentIndex());
    } else if (first.isValid()) {
        m_list->selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    }
}

void ItemPanel::goToTyped() {
    if (!m_path->isModified())
        return showFolder(m_folder);
    const std::string path = typedPath(m_path->text(), m_folder);
    if (leadsToFolder(path)) {
        showFolder(path);
        return m_list->setFocus();
    }
    if (itemExistsAt(path) && isWanted({std::string(lastPathComponent(path)), false})) {
        showFolder(std::string(parentPath(path)), std::string(lastPathComponent(path)));
        return m_list->setFocus();
    }
    m_status->setText(itemExistsAt(path) ? tr("An item of this kind cannot be chosen here.")
                                         : tr("There is nothing at this place."));
    m_status->show();
}

void ItemPanel::goUp() {
    if (m_folder != "/")
        showFolder(std::string(parentPath(m_folder)), std::string(lastPathComponent(m_folder)));
}

void ItemPanel::openCurrent() {
    const QModelIndex current = m_list->currentIndex();
    if (!current.isValid())
        return;
    const FolderEntry& entry = m_model->entryAt(current.row());
    if (entry.isFolder)
        return showFolder(joinPath(m_folder, entry.name));
    m_list->selectionModel()->select(current, QItemSelectionModel::Select);
    accept();
}

void ItemPanel::validate() {
    const QModelIndexList selected = m_list->selectionModel()->selectedIndexes();
    const bool hasFolder = std::ranges::any_of(
        selected, [this](const QModelIndex& index) { return m_model->entryAt(index.row()).isFolder; });
    m_choose->setEnabled(m_wishes.foldersOnly || (!selected.isEmpty() && !(m_wishes.onlyFiles && hasFolder)));
}

std::vector<std::string> ItemPanel::chosen() const {
    std::vector<std::string> paths;
    for (const QModelIndex& index : m_list->selectionModel()->selectedIndexes())
        paths.push_back(joinPath(m_folder, m_model->entryAt(index.row()).name));
    if (paths.empty() && m_wishes.foldersOnly)
        paths.push_back(m_folder);
    return paths;
}

// Return means the panel's button elsewhere.
bool ItemPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        if (watched == m_path)
            goToTyped();
        else
            openCurrent();
        return true;
    }
    if (key == Qt::Key_Backspace && watched == m_list) {
        goUp();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace veilkeep
