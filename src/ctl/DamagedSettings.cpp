#include "ctl/DamagedSettings.h"

#include "format/ErrorText.h"

#include <QCoreApplication>

namespace veilkeep {
namespace {

void tell(const std::string& kept, TerminalOutput& output) {
    output.printError(kept, QCoreApplication::translate(
                                "main", "the settings were damaged, are kept here and begin anew; where a "
                                        "password was set, please set it again")
                                .toStdString());
}

} // namespace

void tellOfDamagedSettings(UserDefaults& defaults, TerminalOutput& output) {
    defaults.setDamagedWhileRunning([&output](const std::string& kept) { tell(kept, output); });
    const auto kept = defaults.keepDamagedAside();
    if (!kept)
        output.printError(kept.error().path, errorReason(kept.error()).toStdString());
    else if (*kept)
        tell(**kept, output);
}

} // namespace veilkeep
