#include "widgets/mainwindow/WindowMessages.h"

#include "filelist/Texts.h"
#include "format/ErrorText.h"
#include "format/ValueFormatting.h"

#include <QStringList>
#include <QVBoxLayout>

namespace veilkeep {

WindowMessages::WindowMessages(FilesViewController& files, GroupViewController& groups, QWidget* parent)
    : QWidget(parent), m_files(files), m_groups(groups) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    connect(&files, &FilesViewController::saveTroubleChanged, this, &WindowMessages::showSaveTrouble);
    connect(&groups, &GroupViewController::saveTroubleChanged, this, &WindowMessages::showSaveTrouble);
    connect(&groups, &GroupViewController::leftVisibleChanged, this, &WindowMessages::showLeftVisible);
    connect(&files.restores(), &Restores::ended, this, &WindowMessages::restoreEnded);
    showSaveTrouble();
    showLeftVisible();
}

MessageBar* WindowMessages::put(QPointer<MessageBar>& bar, MessageBar::Kind kind, const QString& text) {
    if (bar && bar->text() == text)
        return nullptr;
    if (bar) {
        bar->hide();
        bar->deleteLater(); // it may be what was just clicked
    }
    if (text.isEmpty())
        return nullptr;
    bar = new MessageBar(kind, this);
    bar->setText(text);
    layout()->addWidget(bar);
    bar->show();
    return bar;
}

void WindowMessages::showSaveTrouble() {
    const bool isListSaved = !m_files.saveTrouble() || m_files.saveTrouble()->code == ErrorCode::NotDurable;
    const QString listReason = m_files.saveTrouble() ? m_files.whyItCannotBeSaved() : QString();
    put(m_listTrouble, MessageBar::Kind::Warning,
        listReason.isEmpty() ? QString()
        : isListSaved        ? tr("The list of items was saved: %1").arg(listReason)
                             : tr("The list of items could not be saved: %1").arg(listReason));
    const std::optional<Error>& groups = m_groups.saveTrouble();
    put(m_groupsTrouble, MessageBar::Kind::Warning,
        !groups ? QString()
        : groups->code == ErrorCode::NotDurable
            ? tr("The groups were saved: %1").arg(errorReason(*groups))
            : tr("The groups could not be saved: %1").arg(errorReason(*groups)));
}

void WindowMessages::showLeftVisible() {
    const auto count = static_cast<int>(m_groups.leftVisible().size());
    const QString text =
        count == 0 ? QString()
        : count == 1
            ? tr("1 item could not be hidden automatically and is still visible.")
            : tr("%Ln items could not be hidden automatically and are still visible.", nullptr, count);
    MessageBar* const bar = put(m_leftVisible, MessageBar::Kind::Warning, text);
    if (!bar)
        return;
    bar->setActionText(tr("Show"));
    bar->setDismissible(true);
    connect(bar, &MessageBar::actionTriggered, this, &WindowMessages::selectLeftVisible);
    connect(bar, &MessageBar::dismissed, &m_groups, &GroupViewController::leftVisibleWasSeen);
}

void WindowMessages::selectLeftVisible() {
    FilesViewController::Files files;
    for (const std::string& path : m_groups.leftVisible()) {
        if (const ListedFile file = m_files.findFileWithPath(path))
            files.push_back(file);
    }
    m_groups.selectRow(0);
    m_files.filterController().setGroup(m_groups.currentGroupID()); // whatever was searched for
    m_files.filesController().setSelectedObjects(files);
    m_groups.leftVisibleWasSeen();
    emit itemsShown();
}

void WindowMessages::restoreEnded(const std::string& directory, const RestoreSummary& summary) {
    m_found.directories.insert(directory);
    m_found.items += summary.found;
    m_found.unreadable += summary.unreadable;
    if (summary.error != WorkerError::Success)
        m_found.error = summary.error;
    const bool isWhole = m_found.unreadable == 0 && m_found.error == WorkerError::Success;
    MessageBar* const bar = put(
        m_restored, isWhole ? MessageBar::Kind::Information : MessageBar::Kind::Warning, foundText(m_found));
    if (!bar)
        return;
    bar->setDismissible(true);
    connect(bar, &MessageBar::dismissed, this, [this] {
        m_found = {};
        put(m_restored, MessageBar::Kind::Information, {});
    });
}

QString WindowMessages::foundText(const Found& found) {
    const QString where = found.directories.size() == 1
                              ? placeWithTilde(*found.directories.begin())
                              : tr("%Ln folders", nullptr, static_cast<int>(found.directories.size()));
    QStringList sentences;
    if (found.items == 0)
        sentences << tr("No hidden items were found in %1.").arg(where);
    else if (found.items == 1)
        sentences << tr("1 hidden item was found in %1.").arg(where);
    else
        sentences
            << tr("%Ln hidden items were found in %1.", nullptr, static_cast<int>(found.items)).arg(where);
    if (found.unreadable == 1)
        sentences << tr("1 folder could not be read.");
    else if (found.unreadable > 1)
        sentences << tr("%Ln folders could not be read.", nullptr, static_cast<int>(found.unreadable));
    if (found.error != WorkerError::Success)
        sentences << tr("The search did not reach its end: %1").arg(workerErrorText(found.error));
    return sentences.join(QLatin1Char(' '));
}

} // namespace veilkeep
