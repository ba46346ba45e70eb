#include "prefs/PasswordPrompt.h"

namespace veilkeep {

Shake shakeAnimation(const QRectF& rect) {
    constexpr int swings = 4;
    const QPointF start = rect.topLeft(), aside(0.05 * rect.width(), 0);
    Shake shake{{start}, 0.4};
    for (int swing = 0; swing < swings; ++swing) {
        shake.path.push_back(start - aside);
        shake.path.push_back(start + aside);
    }
    shake.path.push_back(start);
    return shake;
}

} // namespace veilkeep
