#pragma once

#include "widgets/preview/ItemType.h"

#include <QHash>
#include <QIcon>
#include <QString>

namespace veilkeep {

// Icons of kinds of items: those of the desktop's theme, and where it has none the program's own. Main
// thread.
class TypeIcons {
public:
    QIcon iconFor(const ItemType& type);

    static QIcon ownIcon(ItemType::Family family);

private:
    QString m_theme;
    QHash<QString, QIcon> m_icons; // of that theme, by MIME type
};

} // namespace veilkeep
