#include "widgets/preview/TypeIcons.h"

#include <QLatin1String>
#include <QtGlobal>

// A function of its own, outside of any namespace, as Qt asks for.
static void registerTypeImages() {
    Q_INIT_RESOURCE(types);
}

namespace veilkeep {
namespace {

QLatin1String ownName(ItemType::Family family) {
    switch (family) {
    case ItemType::Family::Folder:
        return QLatin1String("folder");
    case ItemType::Family::Image:
        return QLatin1String("image");
    case ItemType::Family::Audio:
        return QLatin1String("audio");
    case ItemType::Family::Video:
        return QLatin1String("video");
    case ItemType::Family::Text:
        return QLatin1String("text");
    case ItemType::Family::Archive:
        return QLatin1String("archive");
    case ItemType::Family::Program:
        return QLatin1String("program");
    case ItemType::Family::File:
        break;
    }
    return QLatin1String("file");
}

QIcon themedIcon(const ItemType& type) {
    for (const QString& name : {type.iconName, type.genericIconName})
        if (const QIcon icon = QIcon::fromTheme(name); !name.isEmpty() && !icon.isNull())
            return icon;
    return {};
}

} // namespace

QIcon TypeIcons::iconFor(const ItemType& type) {
    if (m_theme != QIcon::themeName()) {
        m_icons.clear();
        m_theme = QIcon::themeName();
    }
    const QString key = type.mimeType.isEmpty() ? ownName(type.family) : type.mimeType;
    if (const auto known = m_icons.constFind(key); known != m_icons.constEnd())
        return *known;
    const QIcon themed = themedIcon(type);
    return *m_icons.insert(key, themed.isNull() ? ownIcon(type.family) : themed);
}

QIcon TypeIcons::ownIcon(ItemType::Family family) {
    registerTypeImages();
    return QIcon(QLatin1String(":/images/types/") + ownName(family) + QLatin1String(".svg"));
}

} // namespace veilkeep
