#include "widgets/preview/ItemType.h"

#include <array>
#include <utility>

#include <QMimeDatabase>

namespace veilkeep {
namespace {

using Family = ItemType::Family;

Family familyOf(const QMimeType& type) {
    static const std::array<std::pair<QLatin1String, Family>, 9> inherited{{
        {QLatin1String("inode/directory"), Family::Folder},
        {QLatin1String("application/x-executable"), Family::Program},
        {QLatin1String("application/x-sharedlib"), Family::Program},
        {QLatin1String("application/x-pie-executable"), Family::Program},
        {QLatin1String("application/x-desktop"), Family::Program},
        {QLatin1String("application/vnd.appimage"), Family::Program},
        {QLatin1String("application/pdf"), Family::Text},
        {QLatin1String("application/zip"), Family::Archive},
        {QLatin1String("text/plain"), Family::Text},
    }};
    static const std::array<std::pair<QLatin1String, Family>, 9> generic{{
        {QLatin1String("image-x-generic"), Family::Image},
        {QLatin1String("audio-x-generic"), Family::Audio},
        {QLatin1String("video-x-generic"), Family::Video},
        {QLatin1String("package-x-generic"), Family::Archive},
        {QLatin1String("text-x-generic"), Family::Text},
        {QLatin1String("text-html"), Family::Text},
        {QLatin1String("x-office-document"), Family::Text},
        {QLatin1String("x-office-spreadsheet"), Family::Text},
        {QLatin1String("x-office-presentation"), Family::Text},
    }};
    for (const auto& [name, family] : generic)
        if (type.genericIconName() == name)
            return family;
    for (const auto& [name, family] : inherited)
        if (type.inherits(name))
            return family;
    return Family::File;
}

ItemType described(const QMimeType& type) {
    return {.family = familyOf(type),
            .mimeType = type.name(),
            .comment = type.comment(),
            .iconName = type.iconName(),
            .genericIconName = type.genericIconName()};
}

// For patterns like "*.png", which are ASCII.
QString nameForPatterns(std::string_view name) {
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

QMimeType typeOfSpecial(const QMimeDatabase& types, mode_t mode) {
    const char* const name = S_ISFIFO(mode)   ? "inode/fifo"
                             : S_ISSOCK(mode) ? "inode/socket"
                             : S_ISCHR(mode)  ? "inode/chardevice"
                             : S_ISBLK(mode)  ? "inode/blockdevice"
                                              : "inode/symlink";
    return types.mimeTypeForName(QLatin1String(name));
}

} // namespace

ItemType itemTypeOf(std::string_view name, const OpenedItem& item, const WorkStop& stop) {
    const QMimeDatabase types;
    switch (item.kind()) {
    case OpenedItem::Kind::RegularFile: {
        StoppableFile file(item.descriptor(), stop);
        return described(types.mimeTypeForFileNameAndData(nameForPatterns(name), &file));
    }
    case OpenedItem::Kind::Folder:
        return itemTypeOf(name, true);
    case OpenedItem::Kind::Other:
        return described(typeOfSpecial(types, item.status().st_mode));
    case OpenedItem::Kind::Missing:
    case OpenedItem::Kind::Unreadable:
        break;
    }
    return itemTypeOf(name, false);
}

ItemType itemTypeOf(std::string_view name, bool isFolder) {
    const QMimeDatabase types;
    return described(isFolder ? types.mimeTypeForName(QStringLiteral("inode/directory"))
                              : types.mimeTypeForFile(nameForPatterns(name), QMimeDatabase::MatchExtension));
}

QString mimeTypeOfContent(const OpenedItem& item, const WorkStop& stop) {
    StoppableFile file(item.descriptor(), stop);
    return file.isOpen() ? QMimeDatabase().mimeTypeForData(&file).name() : QString();
}

} // namespace veilkeep
