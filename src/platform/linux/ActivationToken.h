#pragma once

#include <QString>

// Tokens by which the desktop lets a window come to the front.
namespace veilkeep {

// What whoever started this program gave it; empty where it gave none. To be read before the application
// object is made, which on X11 takes it away for its first window.
QString inheritedActivationToken();

// Once the application object is there: programs that are started from here on inherit none.
void dropInheritedActivationToken();

// Right before the window is shown or asked to come to the front, whose request takes the token away. On
// X11, where the time of the user's last input decides, it changes nothing.
void useActivationToken(const QString& token);

// The token without what no desktop would have written: control characters, absurd lengths.
QString cleanActivationToken(const QString& token);

} // namespace veilkeep
