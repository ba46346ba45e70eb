#pragma once

namespace veilkeep {

// Looks whether everything that the program needs is there and works, an item that is hidden and brought back
// in a folder of its own included, and prints a line for each. The exit status: 0 where all of it does.
int runSelfTest();

} // namespace veilkeep
