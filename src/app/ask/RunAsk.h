#pragma once

#include "alerts/AlertPresenter.h"

#include <functional>
#include <memory>

namespace veilkeep {

// What the program gives to its asking part.
struct AskParts {
    std::function<std::unique_ptr<AlertPresenter>()> makePresenter; // called once there is a QApplication
    std::function<void()> prepare = [] {};                          // before that presenter: translations
};

// "--ask" as the first argument.
bool isAsking(int argc, char** argv);

// "Veilkeep --ask KIND": puts one question of cloakWorker's to the person at the screen, in a process of its
// own that has nothing to do with the list. What it is about comes on standard input (AskRequest), the answer
// goes to standard output as one line. The window goes when standard input ends, and with SIGTERM. main()
// calls it before anything else. The exit status: 0 answered, 1 not answered, 2 refused, with nothing said:
// as root, without a display, for a request that is none.
int runAsk(int argc, char** argv, const AskParts& parts);

} // namespace veilkeep
