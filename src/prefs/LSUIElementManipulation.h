#pragma once

#include "core/storage/BundleInfo.h"
#include "core/storage/UserDefaults.h"

namespace veilkeep {

// Whether the program has no entry in the taskbar and runs from its icon in the panel. What the user chose is
// kept in the user defaults, the bundle is never written to. Made at the program's start; main thread.
class LSUIElementManipulation {
public:
    // Without a word of the user's it is as the bundle says.
    explicit LSUIElementManipulation(UserDefaults& defaults, // not owned
                                     const BundleInfo& bundle = BundleInfo::main());

    bool shouldBeUIElement() const { return m_isUIElement; } // as it was stored at the start
    bool willBeUIElement() const;                            // after the next start

    // For the next start; stored at once. It stays the user's choice where the bundle says the same: another
    // version's may say something else.
    [[nodiscard]] Result<void> setShouldBeUIElement(bool isUIElement);

private:
    UserDefaults& m_defaults;
    const bool m_whenAbsent;
    const bool m_isUIElement;
};

} // namespace veilkeep
