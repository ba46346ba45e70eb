#include "widgets/filetable/OpenWithItems.h"

#include <QIcon>
#include <QMenu>

namespace veilkeep {
namespace {

using Item = FileListActions::OpenWithItem;

QIcon iconOf(const InstalledApplication& application) {
    return application.iconName.startsWith(QLatin1Char('/')) ? QIcon(application.iconName)
                                                             : QIcon::fromTheme(application.iconName);
}

void addItem(QMenu& menu, const Item& item, FileListActions& actions,
             const std::function<void()>& chooseOther) {
    if (item.kind == Item::Kind::Separator) {
        menu.addSeparator();
        return;
    }
    QString title = item.title;
    QAction* const action = menu.addAction(title.replace(QLatin1Char('&'), QLatin1String("&&")));
    switch (item.kind) {
    case Item::Kind::Application:
        action->setIcon(iconOf(item.application));
        QObject::connect(action, &QAction::triggered, &actions,
                         [&actions, identifier = item.application.identifier] {
                             actions.openSelectedFileWithApplication(identifier);
                         });
        break;
    case Item::Kind::None:
        action->setEnabled(false);
        break;
    case Item::Kind::Other:
        QObject::connect(action, &QAction::triggered, &menu, chooseOther);
        break;
    case Item::Kind::Separator:
        break;
    }
}

} // namespace

void fillOpenWithMenu(QMenu& menu, FilesViewController& files, FileListActions& actions,
                      const std::function<void()>& chooseOther) {
    menu.clear();
    const ListedFile file = files.firstSelectedFile();
    if (!file)
        return;
    for (const Item& item : actions.openWithMenuItemForFile(std::string(file->path())))
        addItem(menu, item, actions, chooseOther);
}

} // namespace veilkeep
