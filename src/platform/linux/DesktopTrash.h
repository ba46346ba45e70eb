#pragma once

#include "platform/Trash.h"

namespace veilkeep {

// The trash that file managers show and restore from (the freedesktop.org trash specification), through GIO.
// Items change their place only: nothing is ever copied or deleted. Any thread.
class DesktopTrash : public Trash {
public:
    [[nodiscard]] Result<void> moveToTrash(const std::string& path) override;
};

} // namespace veilkeep
