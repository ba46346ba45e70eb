#pragma once

#include "widgets/preview/OpenedItem.h"

#include <string_view>

#include <QString>

namespace veilkeep {

// What kind of thing an item is, by its name and its content.
struct ItemType {
    enum class Family { File, Folder, Image, Audio, Video, Text, Archive, Program };

    Family family = Family::File;
    QString mimeType = {};
    QString comment = {}; // "PNG image", in the user's language
    QString iconName = {};
    QString genericIconName = {};
};

// The name is the original one: that of a hidden item says nothing. Any thread but the interface's, for these
// read the type database and the item.
ItemType itemTypeOf(std::string_view name, const OpenedItem& item, const WorkStop& stop);

// By the name alone; for what is not there.
ItemType itemTypeOf(std::string_view name, bool isFolder);

// What the content alone looks like, whatever the name says.
QString mimeTypeOfContent(const OpenedItem& item, const WorkStop& stop);

} // namespace veilkeep
