#include "widgets/mainwindow/InfoFacts.h"

#include "core/base/PathText.h"
#include "core/records/PropertyDictionary.h"
#include "filelist/Texts.h"
#include "format/ValueFormatting.h"
#include "groups/GroupNames.h"

#include <algorithm>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(InfoPane)
};

QString stateText(std::int32_t state) {
    switch (state) {
    case File::Hidden:
        return Texts::tr("Hidden");
    case File::Broken:
        return Texts::tr("Broken");
    default: // a number of the data file
        return Texts::tr("Visible");
    }
}

QString placeText(const File& file) {
    return placeWithTilde(parentPath(file.originalPath()));
}

QString groupText(std::int64_t groupID, const GroupViewController& groups) {
    for (const ListedGroup& group : groups.groups()) {
        if (!group->isHeaderRow() && group->groupID() == groupID)
            return shownGroupName(*group);
    }
    return {};
}

template <class Of>
bool areSame(const FilesViewController::Files& files, Of of) {
    return std::ranges::all_of(files,
                               [&](const ListedFile& file) { return of(*file) == of(*files.front()); });
}

// Where all have the same and none is broken.
QString badgeOf(const FilesViewController::Files& files) {
    const std::int32_t state = files.front()->state();
    const bool hasOne =
        state != File::Broken && areSame(files, [](const File& file) { return file.state(); });
    return hasOne ? VisibleValueTransformer::transformedValue(state == File::Hidden) : QString();
}

Value sizesOf(const FilesViewController::Files& files) {
    ValueList sizes;
    sizes.reserve(files.size());
    for (const ListedFile& file : files)
        sizes.emplace_back(file->size());
    return sizes;
}

template <class Of, class TextOf>
QString common(const FilesViewController::Files& files, Of of, TextOf textOf) {
    return areSame(files, of) ? textOf(*files.front()) : Texts::tr("Several");
}

} // namespace

InfoFacts infoFacts(const FilesViewController::Files& selected, const GroupViewController& groups) {
    if (selected.empty())
        return {};
    const bool isOne = selected.size() == 1;
    return {
        .name = isOne ? shownPath(selected.front()->name())
                      : Texts::tr("%Ln items", nullptr, static_cast<int>(selected.size())),
        .state = common(
            selected, [](const File& file) { return file.state(); },
            [](const File& file) { return stateText(file.state()); }),
        .badge = badgeOf(selected),
        .size = SizeToStringValueTransformer::transformedValue(isOne ? Value(selected.front()->size())
                                                                     : sizesOf(selected)),
        .where = common(
            selected, [](const File& file) { return parentPath(file.originalPath()); }, placeText),
        .group = common(
            selected, [](const File& file) { return file.groupID(); },
            [&](const File& file) { return groupText(file.groupID(), groups); }),
    };
}

FactsOnDisk factsOnDisk(const ItemToLookAt& item) {
    const Value size(item.size);
    return {.size = item.isFile ? SizeToStringValueTransformer::transformedValue(size)
                                : NumberOfFilesInDirectoryValueTransformer::transformedValue(
                                      PropertyDictionary{{"Size", size}, {"Path", Bytes{item.path}}}),
            .created = CreationDateValueTransformer::transformedValue(item.path),
            .modified = ModificationDateValueTransformer::transformedValue(item.path)};
}

} // namespace veilkeep
