#include "core/filesystem/ItemPath.h"
#include "core/storage/UserDefaults.h"
#include "ctl/CommandLine.h"
#include "ctl/DamagedSettings.h"
#include "ctl/DoctorCommand.h"
#include "ctl/Interruption.h"
#include "ctl/PasswordCommand.h"
#include "ctl/RescueCommand.h"
#include "ctl/RowOutput.h"
#include "ctl/TerminalCaller.h"
#include "ctl/TerminalOutput.h"
#include "ctl/TerminalQuestions.h"
#include "ctl/UninstallCommand.h"
#include "ctl/Watch.h"
#include "format/ErrorText.h"
#include "requests/RequestRules.h"
#include "wiring/RequestRoute.h"

#include <QCoreApplication>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <span>

namespace {

using namespace veilkeep;

// Else a file that is opened would become the standard output of this program. What is read from or written
// to a stream that was closed fails as before.
void occupyStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(descriptor, F_GETFD) < 0)
            (void)::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
}

// Tells at once of the paths that cannot be made absolute, and leaves them out.
RequestStatus takePaths(const CommandLine& line, Request& request, TerminalOutput& output,
                        TerminalCaller& caller) {
    RequestStatus status = RequestStatus::AllWell;
    for (const std::string& argument : line.paths) {
        const auto path = absoluteItemPath(argument);
        if (path) {
            caller.setSpelling(*path, argument);
            request.paths.push_back(*path);
            continue;
        }
        const bool isMissing = path.error().systemError == ENOENT;
        const QString reason = isMissing ? workerErrorText(WorkerError::NotFound) : errorReason(path.error());
        output.printError(argument, reason.toStdString());
        status = RequestStatus::SomeFailed;
    }
    return status;
}

// pkexec makes root of a user whose list, and what is saved of it, must stay that user's own.
bool isRunByPkexec() {
    return ::geteuid() == 0 && std::getenv("PKEXEC_UID") != nullptr;
}

RowOutput::Content contentOf(const CommandLine& line) {
    const RequestRule* rule = requestRule(line.command->name);
    const auto is = [rule](RequestCommand command) { return rule && rule->command == command; };
    if (is(RequestCommand::Status))
        return RowOutput::Content::Status;
    if (is(RequestCommand::Group))
        return RowOutput::Content::GroupNames;
    return is(RequestCommand::Groups) ? RowOutput::Content::Groups : RowOutput::Content::List;
}

QVariantMap requestOptions(const CommandLine& line) {
    QVariantMap options = line.groupOptions;
    if (line.state)
        options.insert(QLatin1String(requestOption::state), QString::fromStdString(*line.state));
    if (line.name)
        options.insert(QLatin1String(requestOption::name), QString::fromStdString(*line.name));
    if (line.group)
        options.insert(QLatin1String(requestOption::group), QByteArray::fromStdString(*line.group));
    if (line.all)
        options.insert(QLatin1String(requestOption::all), true);
    return options;
}

QString ownerName(RequestOwner owner) {
    return owner == RequestOwner::Application ? QStringLiteral("application") : QStringLiteral("other");
}

RequestStatus run(const CommandLine& line) {
    if (line.command->name != std::string_view("doctor")) // which a signal may end at once
        Interruption::watch();
    TerminalOutput output(line.endNamesWithNul);
    if (isRunByPkexec()) {
        output.printMessage(QCoreApplication::translate(
            "main", "this program does not run under pkexec; please run it as yourself"));
        return RequestStatus::Refused;
    }
    if (line.command->name == std::string_view("watch"))
        return Watch(output).run();
    if (line.command->name == std::string_view("doctor"))
        return DoctorCommand(line.json, output).run();
    UserDefaults defaults;
    if (!line.isRescue()) // it leaves everything but items as it is
        tellOfDamagedSettings(defaults, output);
    TerminalQuestions questions(line.answers, line.yes, output);
    RowOutput rows(contentOf(line), line.json, output);
    TerminalCaller caller(output, questions, rows);
    if (line.passwordFromInput)
        questions.takePasswordsFromInput();
    if (line.isPasswordCommand())
        return PasswordCommand(defaults, output, questions, caller).run(line.paths.front());
    if (line.command->name == std::string_view("uninstall"))
        return UninstallCommand(defaults, output, caller).run();

    if (line.isRescue()) {
        const RescueWishes wishes{line.paths, line.dryRun, line.staysOnVolume, line.copyTo};
        const RequestStatus status = RescueCommand(wishes, output, questions, caller).run();
        return output.flush() ? status : std::max(status, RequestStatus::SomeFailed);
    }

    Request request{QString::fromLatin1(line.command->name), {}, requestOptions(line)};
    RequestStatus status = takePaths(line, request, output, caller);
    request.options.insert(QLatin1String(requestOption::interactive), questions.isInteractive());
    RequestRoute route(caller, defaults,
                       {.repeatPassword = [&] { caller.repeatPassword(); },
                        .ownerFound = [&](RequestOwner owner) { rows.setOwner(ownerName(owner)); }});
    if (line.paths.empty() || request.paths.size() >= requestRule(request.command)->leastPaths)
        status = std::max(status, route.run(request));
    if (requestRule(request.command)->onlyReads() && status == RequestStatus::AllWell)
        rows.finish();
    return output.flush() ? status : std::max(status, RequestStatus::SomeFailed);
}

int printAndFlush(const std::string& text) {
    const bool isWritten = std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
    return static_cast<int>(isWritten ? RequestStatus::AllWell : RequestStatus::SomeFailed);
}

} // namespace

int main(int argc, char** argv) {
    occupyStandardDescriptors();
    const auto arguments = std::span<char* const>(argv, static_cast<std::size_t>(argc)).subspan(argc > 0);
    const auto parsed = CommandLine::parse(arguments);
    if (const auto* mistake = std::get_if<std::string>(&parsed)) {
        std::fprintf(stderr, "veilkeepctl: %s\nTry 'veilkeepctl --help'.\n", mistake->c_str());
        return static_cast<int>(RequestStatus::WrongUsage);
    }
    const auto& line = std::get<CommandLine>(parsed);
    if (line.wantsHelp)
        return printAndFlush(line.command ? helpText(*line.command) : helpText());
    if (line.wantsVersion)
        return printAndFlush("veilkeepctl " VEILKEEP_VERSION "\n");
    int noArguments = 1; // Qt would take some for its own
    const QCoreApplication application(noArguments, argv);
    return static_cast<int>(run(line));
}
