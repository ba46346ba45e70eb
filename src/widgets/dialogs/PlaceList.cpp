#include "widgets/dialogs/PlaceList.h"

#include "core/base/PathText.h"
#include "core/environment/XdgDirectories.h"
#include "core/filesystem/MountTable.h"
#include "core/names/UserDirectories.h"
#include "filelist/Texts.h"

#include <QStyle>

#include <algorithm>
#include <array>

#include <sys/stat.h>

namespace veilkeep {
namespace {

constexpr int pathRole = Qt::UserRole;

bool isFolderThere(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool isWhereVolumesComeAndGo(const std::string& mountPoint) {
    static constexpr std::array<std::string_view, 3> places{"/media", "/run/media", "/mnt"};
    return std::ranges::any_of(places, [&](auto place) { return isSameOrBelow(mountPoint, place); });
}

std::string pathOf(const QListWidgetItem& item) {
    return item.data(pathRole).toByteArray().toStdString();
}

} // namespace

PlaceList::PlaceList(QWidget* parent) : QListWidget(parent) {
    setAccessibleName(tr("Places"));
    setSpacing(2);
    const std::string home = homeDirectory();
    const QIcon folder = style()->standardIcon(QStyle::SP_DirIcon);
    if (!home.empty())
        add(home, tr("Home"), style()->standardIcon(QStyle::SP_DirHomeIcon));
    for (const std::string& path : userDirectories(XdgDirectories::current().configHome, home))
        if (path != home && isFolderThere(path))
            add(path, shownPath(lastPathComponent(path)), folder);
    add("/", tr("File System"), style()->standardIcon(QStyle::SP_DriveHDIcon));
    for (const Mount& mount : MountTable::current()->mounts())
        if (isWhereVolumesComeAndGo(mount.mountPoint))
            add(mount.mountPoint, shownPath(lastPathComponent(mount.mountPoint)),
                style()->standardIcon(QStyle::SP_DriveHDIcon));
    connect(this, &QListWidget::itemClicked, this,
            [this](const QListWidgetItem* item) { emit placeChosen(pathOf(*item)); });
    connect(this, &QListWidget::itemActivated, this,
            [this](const QListWidgetItem* item) { emit placeChosen(pathOf(*item)); });
}

void PlaceList::add(const std::string& path, const QString& name, const QIcon& icon) {
    auto* const item = new QListWidgetItem(icon, name, this);
    item->setData(pathRole, QByteArray::fromStdString(path));
}

void PlaceList::setCurrentPlace(const std::string& path) {
    clearSelection();
    for (int row = 0; row < count(); ++row)
        if (pathOf(*item(row)) == path)
            setCurrentRow(row);
}

} // namespace veilkeep
