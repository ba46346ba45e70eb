#include "core/environment/Bundle.h"
#include "core/environment/XdgDirectories.h"
#include "core/protocol/CloakWorkerComunicator.h"
#include "core/storage/UserDefaults.h"
#include "ctl/CommandLine.h"
#include "ctl/Interruption.h"
#include "ctl/MoveCommand.h"
#include "ctl/RestoreCommand.h"
#include "ctl/TerminalOutput.h"

#include <unistd.h>

#include <cstdio>
#include <span>

namespace {

using namespace veilkeep;

ExitStatus run(const CommandLine& line) {
    TerminalOutput output(line.endNamesWithNul);
    const std::string worker = bundledProgramPath(applicationBundlePath(), "cloakWorker");
    if (::access(worker.c_str(), X_OK) != 0) {
        output.printError(worker, "this program is missing or may not be run; please install Veilkeep anew");
        return ExitStatus::SomeFailed;
    }
    Interruption::watch();
    const std::string inProgress = OwnPlaces::current().inProgressDirectory;
    CloakWorkerComunicator comunicator(worker, inProgress);
    switch (line.command) {
    case CommandLine::Command::Hide:
        comunicator.setTraceWishes({UserDefaults().boolean("CleanRecentItems"), false});
        return MoveCommand(comunicator, output).hide(line.paths);
    case CommandLine::Command::Unhide:
        return MoveCommand(comunicator, output).unhide(line.paths);
    case CommandLine::Command::Restore:
        return RestoreCommand(worker, InProgressFolder(inProgress), output).restore(line.paths);
    case CommandLine::Command::Help:
    case CommandLine::Command::Version:
        break;
    }
    return ExitStatus::WrongUsage;
}

} // namespace

int main(int argc, char** argv) {
    const auto arguments = std::span<char* const>(argv, static_cast<std::size_t>(argc)).subspan(argc > 0);
    const auto parsed = CommandLine::parse(arguments);
    if (const auto* mistake = std::get_if<std::string>(&parsed)) {
        std::fprintf(stderr, "veilkeepctl: %s\nTry 'veilkeepctl --help'.\n", mistake->c_str());
        return static_cast<int>(ExitStatus::WrongUsage);
    }
    const auto& line = std::get<CommandLine>(parsed);
    if (line.command == CommandLine::Command::Help)
        std::fputs(usageText, stdout);
    else if (line.command == CommandLine::Command::Version)
        std::puts("veilkeepctl " VEILKEEP_VERSION);
    else
        return static_cast<int>(run(line));
    return std::fflush(stdout) == 0 ? 0 : static_cast<int>(ExitStatus::SomeFailed);
}
