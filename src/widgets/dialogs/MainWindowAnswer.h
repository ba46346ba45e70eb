#pragma once

#include <functional>

class QWidget;

namespace veilkeep {

// The main window that dialogs are attached to: null or hidden while there is none to see.
using MainWindowAnswer = std::function<QWidget*()>;

// That window where it can be seen, else null.
QWidget* visibleWindow(const MainWindowAnswer& mainWindow);

} // namespace veilkeep
