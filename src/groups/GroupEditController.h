#pragma once

#include "groups/GroupEditView.h"
#include "groups/GroupImages.h"
#include "groups/GroupViewController.h"
#include "groups/KeptIcons.h"
#include "platform/Sounds.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace veilkeep {

// What editing groups works with. Nothing of it is owned; all of it outlives the controller.
struct GroupEditControllerParts {
    GroupViewController& groups;
    GroupEditView& view;
    const GroupImages& images;
    KeptIcons& keptIcons;
    std::function<std::optional<std::string>()> chooseImageFile; // a panel on the sheet
    Sounds* sounds = nullptr;
};

// Runs the sheet in which the user gives a group another name, icon or AutoHide mark. Groups that cannot be
// removed are not edited. Owned by the wiring; main thread.
class GroupEditController {
public:
    struct MenuItem {
        const char* IconName; // to be shown by shownIconName()
        const char* IconPath; // one of the application's images
    };

    explicit GroupEditController(const GroupEditControllerParts& parts);

    const std::vector<MenuItem>& menuItems() const { return m_menuItems; }
    static QString shownIconName(const MenuItem& item);

    // Each returns when the sheet has closed. A second one while it is open does nothing.
    void editGroup(const ListedGroup& group);
    // From the name's field in the list, with what was typed there: no entry of the pop-up is selected, and
    // the group keeps its icon unless one is chosen.
    void editCell(const ListedGroup& group, const QString& typed);

    // --- What the sheet's controls do ---
    void setFromList();
    void changeFileLocation();
    void takeImageFile(const std::string& path); // chosen, or dropped onto the image well
    void takeImage(std::string_view bytes);      // dropped without a file
    void resetToDefault();
    void autoHideChanged(); // stored by apply() alone
    void back();
    void cancel(); // at any time
    void apply();

    const std::string& newIconPath() const { return m_newIconPath; } // empty: none was chosen
    void setNewIconPath(const std::string& path) { m_newIconPath = path; }

    static std::string fileNameForImageInImagePicker() { return "Icon"; }

private:
    void initMenuItems();
    void show(const ListedGroup& group, const QString& name);
    void showModalWindow();
    std::optional<std::size_t> itemWithPath(std::string_view path) const;
    void selectIconWithPath(std::string_view path);
    QString iconWarning() const;
    void tellOfUnreadableImage(const QString& trouble);
    void showImage(const std::string& iconPath, Bytes image);
    bool hasChosenImage() const { return !m_newIconPath.empty() || m_newImage; }
    void tellOfChosenImage();
    std::optional<std::string> iconPathToApply();

    const GroupEditControllerParts m_parts;
    std::vector<MenuItem> m_menuItems;
    ListedGroup m_currentGroup; // while the sheet is open
    std::string m_newIconPath;
    std::optional<Bytes> m_newImage; // without a file
    bool m_isOpen = false;
    bool m_keepsIcon = false; // unless one is chosen
};

} // namespace veilkeep
