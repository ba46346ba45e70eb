#pragma once

class QDialog;

namespace veilkeep {

// Shows the dialog and turns the event loop until it has closed, whoever closes it. False where it is gone by
// then, with its parent for example.
[[nodiscard]] bool runModal(QDialog& dialog);

// Menus and lists that have popped up would stay behind without the window that they came from.
void closePopups();

} // namespace veilkeep
