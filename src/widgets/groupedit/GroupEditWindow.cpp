#include "widgets/groupedit/GroupEditWindow.h"

#include "widgets/dialogs/ModalRun.h"
#include "widgets/groupedit/GroupEditSheet.h"
#include "widgets/groupedit/ImageWell.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

#include <utility>

namespace veilkeep {

GroupEditWindow::GroupEditWindow(MainWindowAnswer mainWindow) : m_mainWindow(std::move(mainWindow)) {}

GroupEditWindow::~GroupEditWindow() = default;

void GroupEditWindow::open(GroupEditController& controller) {
    m_sheet = std::make_unique<GroupEditSheet>(controller, visibleWindow(m_mainWindow));
}

void GroupEditWindow::run() {
    if (runModal(*m_sheet))
        m_sheet.reset();
    else
        static_cast<void>(m_sheet.release()); // gone already, with the main window
}

// What opened above it goes with it.
void GroupEditWindow::close() {
    closePopups();
    if (m_sheet)
        m_sheet->done(QDialog::Rejected);
}

void GroupEditWindow::showTab(Tab tab) {
    m_sheet->showTab(tab);
}

QString GroupEditWindow::name() const {
    return m_sheet->groupNameField().text();
}

void GroupEditWindow::setName(const QString& name) {
    m_sheet->groupNameField().setText(name);
}

void GroupEditWindow::showIcon(const Group& lookingLike) {
    m_sheet->groupIcon().setIconOf(lookingLike);
}

std::optional<std::size_t> GroupEditWindow::selectedIcon() const {
    const int item = m_sheet->popUpGroupIcons().currentIndex();
    return item < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(item));
}

void GroupEditWindow::selectIcon(std::optional<std::size_t> item) {
    m_sheet->popUpGroupIcons().setCurrentIndex(item ? static_cast<int>(*item) : -1);
}

bool GroupEditWindow::autoHide() const {
    return m_sheet->autoHideBox().isChecked();
}

void GroupEditWindow::setAutoHide(bool autoHide) {
    m_sheet->autoHideBox().setChecked(autoHide);
}

void GroupEditWindow::tell(const QString& line) {
    m_sheet->tell(line);
}

} // namespace veilkeep
