#include "groups/GroupEditController.h"

#include "core/base/PathText.h"
#include "filelist/Texts.h"
#include "format/ErrorText.h"
#include "groups/EnteredName.h"

#include <iterator>
#include <utility>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(GroupEdit)
};

constexpr GroupEditController::MenuItem builtInIcons[] = {
    {QT_TRANSLATE_NOOP("GroupEdit", "Documents"), "folder-documents_alt"},
    {QT_TRANSLATE_NOOP("GroupEdit", "Simple"), "folder-generic"},
    {QT_TRANSLATE_NOOP("GroupEdit", "Pictures"), "folder-pictures"},
    {QT_TRANSLATE_NOOP("GroupEdit", "Public"), "folder-public"},
    {QT_TRANSLATE_NOOP("GroupEdit", "Pink"), "folder-smart"},
    {QT_TRANSLATE_NOOP("GroupEdit", "Danger"), "folder_achtung"},
    {QT_TRANSLATE_NOOP("GroupEdit", "Applications"), "folder_apps"},
    {QT_TRANSLATE_NOOP("GroupEdit", "Smile"), "folder_chatlogs"},
    {QT_TRANSLATE_NOOP("GroupEdit", "Drop"), "folder_drop"},
    {QT_TRANSLATE_NOOP("GroupEdit", "Games"), "folder_games"},
    {QT_TRANSLATE_NOOP("GroupEdit", "Movies"), "folder_movies"},
    {QT_TRANSLATE_NOOP("GroupEdit", "Music"), "folder_music"},
    {QT_TRANSLATE_NOOP("GroupEdit", "Private"), "folder_private"},
    {QT_TRANSLATE_NOOP("GroupEdit", "Sites"), "folder_sites"},
    {QT_TRANSLATE_NOOP("GroupEdit", "User"), "folder_user"},
    {QT_TRANSLATE_NOOP("GroupEdit", "XXX"), "folder_xxx"},
};

} // namespace

GroupEditController::GroupEditController(const GroupEditControllerParts& parts) : m_parts(parts) {
    initMenuItems();
}

void GroupEditController::initMenuItems() {
    m_menuItems.assign(std::begin(builtInIcons), std::end(builtInIcons));
}

QString GroupEditController::shownIconName(const MenuItem& item) {
    return QCoreApplication::translate("GroupEdit", item.IconName);
}

// --- The sheet ---

void GroupEditController::editGroup(const ListedGroup& group) {
    if (m_isOpen || !m_parts.groups.rowOf(group) || !group->canBeRemoved())
        return;
    show(group, EnteredName::editableName(*group));
    m_keepsIcon = false;
    selectIconWithPath(group->iconPath());
    m_parts.view.tell(iconWarning());
    showModalWindow();
}

void GroupEditController::editCell(const ListedGroup& group, const QString& typed) {
    if (m_isOpen || !m_parts.groups.rowOf(group) || !group->canBeRemoved())
        return;
    show(group, typed);
    m_keepsIcon = true;
    showModalWindow();
}

void GroupEditController::show(const ListedGroup& group, const QString& name) {
    m_currentGroup = group;
    m_isOpen = true;
    setNewIconPath({});
    m_newImage.reset();
    GroupEditView& view = m_parts.view;
    view.open(*this);
    view.showTab(GroupEditView::Tab::SetName);
    view.setName(name);
    view.showIcon(*group);
    view.selectIcon(std::nullopt);
    view.setAutoHide(group->autoHide().value_or(false));
    view.tell({});
}

void GroupEditController::showModalWindow() {
    m_parts.view.run();
    m_isOpen = false;
    m_currentGroup.reset();
    m_newImage.reset();
}

void GroupEditController::back() {
    m_parts.view.showTab(GroupEditView::Tab::SetName);
}

void GroupEditController::cancel() {
    if (m_isOpen)
        m_parts.view.close();
}

void GroupEditController::resetToDefault() {
    GroupEditView& view = m_parts.view;
    view.setName(EnteredName::editableName(*m_currentGroup));
    view.showIcon(*m_currentGroup);
    view.setAutoHide(m_currentGroup->autoHide().value_or(false));
    if (m_keepsIcon && !itemWithPath(m_currentGroup->iconPath()))
        view.selectIcon(std::nullopt);
    else
        selectIconWithPath(m_currentGroup->iconPath());
    hasChosenImage() ? tellOfChosenImage() : view.tell(iconWarning());
}

void GroupEditController::autoHideChanged() {
    if (m_parts.sounds)
        m_parts.sounds->playSound("AutoHideSound");
}

// --- The icon ---

// Of two equal entries the later wins.
std::optional<std::size_t> GroupEditController::itemWithPath(std::string_view path) const {
    for (std::size_t item = m_menuItems.size(); item > 0; --item)
        if (m_menuItems[item - 1].IconPath == path)
            return item - 1;
    return std::nullopt;
}

// The first where there is none.
void GroupEditController::selectIconWithPath(std::string_view path) {
    m_parts.view.selectIcon(itemWithPath(path).value_or(0));
}

// Empty where the group keeps its icon, or where an image was chosen instead.
QString GroupEditController::iconWarning() const {
    const bool isReplaced = m_currentGroup->iconPath().starts_with('/') && m_parts.view.selectedIcon();
    return isReplaced && !hasChosenImage()
               ? Texts::tr("The icon comes from an image file. OK replaces it with the one selected "
                           "in the list; to keep it, choose the file again.")
               : QString();
}

void GroupEditController::tellOfUnreadableImage(const QString& trouble) {
    const QString warning = iconWarning();
    m_parts.view.tell(warning.isEmpty() ? trouble : trouble + QLatin1Char('\n') + warning);
}

void GroupEditController::setFromList() {
    const auto selected = m_parts.view.selectedIcon();
    if (!selected)
        return;
    const std::string path = m_menuItems.at(*selected).IconPath;
    showImage(path, m_parts.images.imageNamed(path).value_or(Bytes()));
    tellOfChosenImage();
}

// It wins over the list as long as the sheet is open.
void GroupEditController::tellOfChosenImage() {
    m_parts.view.tell(hasChosenImage() ? Texts::tr("The image that you chose stays the icon: OK takes that. "
                                                   "To take another one, cancel and edit the group again.")
                                       : QString());
}

void GroupEditController::showImage(const std::string& iconPath, Bytes image) {
    Group lookingLike;
    lookingLike.setIconPath(iconPath);
    lookingLike.setIconData(std::move(image));
    m_parts.view.showIcon(lookingLike);
}

void GroupEditController::changeFileLocation() {
    const auto path = m_parts.chooseImageFile();
    if (path && m_isOpen)
        takeImageFile(*path);
}

void GroupEditController::takeImageFile(const std::string& path) {
    auto image = m_parts.images.imageAtPath(path);
    if (!image)
        return tellOfUnreadableImage(Texts::tr("“%1” is no image that can be read. The icon stays as it is.")
                                         .arg(shownPath(lastPathComponent(path))));
    showImage(path, std::move(*image));
    setNewIconPath(path);
    m_newImage.reset();
    m_parts.view.tell({});
}

void GroupEditController::takeImage(std::string_view bytes) {
    auto image = m_parts.images.imageIn(bytes);
    if (!image)
        return tellOfUnreadableImage(
            Texts::tr("This is no image that can be read. The icon stays as it is."));
    showImage({}, *image);
    setNewIconPath({});
    m_newImage = std::move(image);
    m_parts.view.tell({});
}

// --- Applying ---

void GroupEditController::apply() {
    GroupViewController& groups = m_parts.groups;
    if (!groups.rowOf(m_currentGroup))
        return m_parts.view.tell(Texts::tr("This group is no longer there."));
    const EnteredName entered(groups, *m_currentGroup, m_parts.view.name());
    if (entered.fault == EnteredName::Fault::Taken)
        return m_parts.view.showTab(GroupEditView::Tab::ErrorExist);
    if (entered.fault)
        return m_parts.view.tell(EnteredName::faultText(*entered.fault));
    const bool autoHide = m_parts.view.autoHide();
    const auto iconPath = iconPathToApply();
    if (!iconPath)
        return;
    groups.setNewName(entered.name, *iconPath, m_currentGroup);
    groups.setAutoHide(autoHide, m_currentGroup);
    m_parts.keptIcons.removeUnused(groups.groups());
    emit groups.GroupsUpdated();
    m_parts.view.close();
}

// Nothing, with a line in the sheet: what was chosen cannot be had.
std::optional<std::string> GroupEditController::iconPathToApply() {
    if (m_newImage) {
        auto kept = m_parts.keptIcons.keep(fileNameForImageInImagePicker(), m_newImage->data.view());
        if (kept)
            return std::move(kept).value();
        m_parts.view.tell(Texts::tr("The image cannot be kept: %1").arg(errorReason(kept.error())));
        return std::nullopt;
    }
    if (!newIconPath().empty()) {
        if (m_parts.images.imageAtPath(newIconPath()))
            return newIconPath();
        const QString trouble =
            m_parts.view.selectedIcon()
                ? Texts::tr("“%1” can no longer be read. OK takes the icon that is selected in the list.")
                : Texts::tr("“%1” can no longer be read. OK leaves the icon as it is.");
        m_parts.view.tell(trouble.arg(shownPath(lastPathComponent(newIconPath()))));
        setNewIconPath({});
        m_parts.view.showIcon(*m_currentGroup);
        return std::nullopt;
    }
    const auto selected = m_parts.view.selectedIcon();
    return selected ? m_menuItems.at(*selected).IconPath : std::string(m_currentGroup->iconPath());
}

} // namespace veilkeep
