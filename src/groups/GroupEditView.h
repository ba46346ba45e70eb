#pragma once

#include "core/records/Group.h"

#include <QString>

#include <optional>

namespace veilkeep {

class GroupEditController;

// The sheet in which a group is edited, as its controller sees it. What it shows and what is entered is there
// while it runs. Main thread.
class GroupEditView {
public:
    enum class Tab { SetName, ErrorExist };

    virtual ~GroupEditView() = default;

    virtual void open(GroupEditController& controller) = 0; // made, not shown yet
    virtual void run() = 0;   // shows it and returns when it has closed, whoever closes it
    virtual void close() = 0; // at any time

    virtual void showTab(Tab tab) = 0;
    virtual QString name() const = 0;
    virtual void setName(const QString& name) = 0;
    virtual void showIcon(const Group& lookingLike) = 0; // its image and icon path count
    virtual std::optional<std::size_t> selectedIcon() const = 0;
    virtual void selectIcon(std::optional<std::size_t> item) = 0; // of the controller's menuItems()
    virtual bool autoHide() const = 0;
    virtual void setAutoHide(bool autoHide) = 0;
    virtual void tell(const QString& line) = 0; // below the form, until the next one; empty: none

protected:
    GroupEditView() = default;
    GroupEditView(const GroupEditView&) = default;
    GroupEditView& operator=(const GroupEditView&) = default;
};

} // namespace veilkeep
