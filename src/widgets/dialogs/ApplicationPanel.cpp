#include "widgets/dialogs/ApplicationPanel.h"

#include <algorithm>

#include <QAbstractListModel>
#include <QCollator>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QVBoxLayout>

namespace veilkeep {
namespace {

constexpr int identifierRole = Qt::UserRole, iconExtent = 24;

// Icons are looked for when a row is drawn.
class ApplicationModel : public QAbstractListModel {
public:
    ApplicationModel(const std::vector<InstalledApplication>& applications, QObject* parent)
        : QAbstractListModel(parent), m_applications(applications) {
        QCollator collator;
        collator.setCaseSensitivity(Qt::CaseInsensitive);
        std::ranges::stable_sort(m_applications, [&](const auto& one, const auto& other) {
            return collator.compare(one.name, other.name) < 0;
        });
    }

    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_applications.size());
    }

    QVariant data(const QModelIndex& index, int role) const override {
        if (!checkIndex(index, CheckIndexOption::IndexIsValid))
            return {};
        const InstalledApplication& application = m_applications[static_cast<std::size_t>(index.row())];
        if (role == Qt::DisplayRole)
            return application.name;
        if (role == identifierRole)
            return application.identifier;
        if (role == Qt::AccessibleDescriptionRole)
            return application.version;
        return role == Qt::DecorationRole ? iconOf(application) : QVariant();
    }

private:
    static QIcon iconOf(const InstalledApplication& application) {
        static const QIcon none;
        return application.iconName.startsWith(u'/') ? QIcon(application.iconName)
                                                     : QIcon::fromTheme(application.iconName, none);
    }

    std::vector<InstalledApplication> m_applications;
};

} // namespace

ApplicationPanel::ApplicationPanel(const std::vector<InstalledApplication>& applications, QWidget* parent)
    : QDialog(parent),
      m_search(new QLineEdit),
      m_list(new QListView),
      m_matches(new QSortFilterProxyModel(this)) {
    setWindowTitle(tr("Choose Application"));
    m_search->setPlaceholderText(tr("Search"));
    m_search->setAccessibleName(tr("Search"));
    m_search->setClearButtonEnabled(true);
    m_search->installEventFilter(this);
    m_matches->setSourceModel(new ApplicationModel(applications, this));
    m_matches->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_list->setModel(m_matches);
    m_list->setAccessibleName(tr("Applications"));
    m_list->setUniformItemSizes(true);
    m_list->setSpacing(2);
    m_list->setIconSize({iconExtent, iconExtent});
    auto* const box = new QDialogButtonBox;
    m_choose = box->addButton(tr("Open"), QDialogButtonBox::AcceptRole);
    box->addButton(tr("Cancel"), QDialogButtonBox::RejectRole);
    auto* const rows = new QVBoxLayout(this);
    rows->addWidget(m_search);
    rows->addWidget(m_list, 1);
    rows->addWidget(box);
    m_choose->setDefault(true);
    connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_list, &QListView::doubleClicked, this, &QDialog::accept);
    connect(m_search, &QLineEdit::textChanged, this, &ApplicationPanel::showMatches);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ApplicationPanel::validate);
    resize(420, 460);
    showMatches({});
}

void ApplicationPanel::showMatches(const QString& text) {
    m_matches->setFilterFixedString(text);
    m_list->setCurrentIndex(m_matches->index(0, 0));
    validate();
}

void ApplicationPanel::validate() {
    m_choose->setEnabled(m_list->selectionModel()->hasSelection());
}

std::optional<QString> ApplicationPanel::chosen() const {
    const QModelIndexList selected = m_list->selectionModel()->selectedIndexes();
    return selected.isEmpty() ? std::nullopt
                              : std::optional(selected.front().data(identifierRole).toString());
}

// Up and down go through the list while the search field keeps the keyboard.
bool ApplicationPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Up && key != Qt::Key_Down && key != Qt::Key_PageUp && key != Qt::Key_PageDown)
        return QDialog::eventFilter(watched, event);
    QCoreApplication::sendEvent(m_list, event);
    return true;
}

} // namespace veilkeep
