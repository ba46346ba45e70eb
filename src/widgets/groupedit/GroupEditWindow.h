#pragma once

#include "groups/GroupEditView.h"
#include "widgets/dialogs/MainWindowAnswer.h"

#include <memory>

namespace veilkeep {

class GroupEditSheet;

// Edits groups in a sheet on the main window. Main thread.
class GroupEditWindow : public GroupEditView {
public:
    explicit GroupEditWindow(MainWindowAnswer mainWindow);
    ~GroupEditWindow() override;
    GroupEditWindow(const GroupEditWindow&) = delete;
    GroupEditWindow& operator=(const GroupEditWindow&) = delete;

    void open(GroupEditController& controller) override;
    void run() override;
    void close() override;

    void showTab(Tab tab) override;
    QString name() const override;
    void setName(const QString& name) override;
    void showIcon(const Group& lookingLike) override;
    std::optional<std::size_t> selectedIcon() const override;
    void selectIcon(std::optional<std::size_t> item) override;
    bool autoHide() const override;
    void setAutoHide(bool autoHide) override;
    void tell(const QString& line) override;

private:
    MainWindowAnswer m_mainWindow;
    std::unique_ptr<GroupEditSheet> m_sheet; // while it is open
};

} // namespace veilkeep
