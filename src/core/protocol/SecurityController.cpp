#include "core/protocol/SecurityController.h"

#include "core/filesystem/ResolvedPath.h"
#include "core/log/Log.h"
#include "core/protocol/TrustedProgram.h"
#include "core/protocol/WorkerAnswer.h"
#include "core/protocol/WorkerError.h"
#include "core/storage/DefaultsKeys.h"

#include <cassert>
#include <string_view>
#include <utility>

namespace veilkeep {
namespace {

using Answer = RightsAuthority::Answer;
using Interaction = RightsAuthority::Interaction;

constexpr std::string_view topic = "Administrator rights"; // of every line in the log
constexpr int dismissedExit = 126;                         // pkexec's own
constexpr int refusedExit = 127; // the same, for whatever else keeps it from running the worker

SecurityController* instance = nullptr;

bool isGranted(Answer answer) {
    return answer == Answer::Granted || answer == Answer::AskedEachRun;
}

std::string_view reasonFor(Answer answer) {
    switch (answer) {
    case Answer::Granted:
    case Answer::AskedEachRun:
        return "granted";
    case Answer::Refused:
        return "the right was not granted or has run out";
    case Answer::Dismissed:
        return "the question for the right was dismissed";
    case Answer::NoAgent:
        return "there is nobody who could ask for the right";
    case Answer::Unavailable:
        return "the system's authority on rights could not be asked";
    }
    return {};
}

std::int32_t statusFrom(Answer answer) {
    return isGranted(answer) ? 0 : static_cast<std::int32_t>(answer);
}

void logReason(std::string_view reason) {
    logLine(std::string(topic) + ": " + std::string(reason));
}

CloakWorkerResult failure(WorkerError error) {
    return CloakWorkerResult::resultWithErrorCode(static_cast<int>(error));
}

// The worker ran, or something killed pkexec before.
CloakWorkerResult failureWithoutAnswer(const ChildProcessResult& run) {
    if (run.end == ChildProcessResult::End::Signalled)
        logReason("the run was ended by signal " + std::to_string(run.status));
    else
        logReason("the worker gave no answer that can be understood");
    return failure(WorkerError::Unknown);
}

} // namespace

SecurityController::SecurityController(RightsAuthority& authority, UserDefaults& defaults,
                                       std::string inProgressFolder, Tick tick, std::string pkexec)
    : m_authority(authority),
      m_defaults(defaults),
      m_inProgressFolder(std::move(inProgressFolder)),
      m_tick(std::move(tick)),
      m_pkexec(std::move(pkexec)) {
    assert(!instance);
    instance = this;
}

SecurityController::~SecurityController() {
    instance = nullptr;
}

SecurityController* SecurityController::sharedInstance() {
    return instance;
}

bool SecurityController::isEnabled() {
    if (m_defaults.contains(defaultsKey::allowPrivilidgedFiles))
        return m_defaults.boolean(defaultsKey::allowPrivilidgedFiles).value_or(false);
    m_defaults.set(defaultsKey::allowPrivilidgedFiles, false);
    if (const Result<void> stored = m_defaults.synchronize(); !stored)
        logError(topic, stored.error());
    return false;
}

void SecurityController::authorize() {
    if (authorized())
        return;
    const Answer answer = m_authority.check(moveAction, Interaction::Allowed);
    m_authorized = isGranted(answer);
    m_status = statusFrom(answer);
    if (!m_authorized)
        logReason(reasonFor(answer));
}

void SecurityController::deauthorize() {
    if (m_status != 0)
        return;
    m_authorized = false;
    m_status = statusFrom(m_authority.giveUp(moveAction));
}

bool SecurityController::authorized() {
    return isGranted(held());
}

Answer SecurityController::held() {
    return m_authorized ? m_authority.check(moveAction, Interaction::Never) : Answer::Refused;
}

CloakWorkerResult
SecurityController::executeCommandWithPrivilidges(const std::string& tool,
                                                  const std::vector<std::string>& arguments) {
    assert(!arguments.empty());
    if (const Result<void> trusted = checkTrustedProgram(tool); !trusted) {
        logError("Administrator rights: the worker may not have them", trusted.error());
        return refuse(Answer::Unavailable);
    }
    if (const Answer answer = held(); !isGranted(answer)) {
        logReason(reasonFor(answer));
        return refuse(answer);
    }
    if (arguments.back().find('\0') != std::string::npos) { // the tool would take it for another item's path
        logReason("no item's path holds a NUL");
        return failure(WorkerError::Unknown);
    }
    return resultOf(run(tool, arguments));
}

ChildProcessResult SecurityController::run(const std::string& tool,
                                           const std::vector<std::string>& arguments) {
    std::vector<std::string> command = {"--disable-internal-agent", tool};
    command.insert(command.end(), arguments.begin(), arguments.end() - 1);
    command.push_back("-");
    ChildProcessOptions options;
    const std::string path = withResolvedParent(arguments.back()).value_or(arguments.back());
    options.input = path + '\0' + m_inProgressFolder + '\0';
    options.directory = "/"; // pkexec logs it
    options.inheritEnvironment = false;
    options.variables = {"LANG=C.UTF-8", "PATH=/usr/sbin:/usr/bin:/sbin:/bin"};
    options.tick = &m_tick;
    m_isEnded = false;
    if (m_shouldEnd)
        options.shouldEnd = [this] { return m_isEnded = m_shouldEnd(); };
    return runChildProcess(m_pkexec, command, options);
}

CloakWorkerResult SecurityController::resultOf(const ChildProcessResult& run) {
    m_status = 0;
    const auto answer = run.truncated ? std::nullopt : workerAnswer(run.output);
    if (answer)
        return *answer;
    if (run.end == ChildProcessResult::End::NotStarted) {
        logError(topic, run.error);
        return refuse(Answer::Unavailable);
    }
    const bool isEnded = m_isEnded && run.end == ChildProcessResult::End::Signalled;
    if (isEnded || run.exitedWith(dismissedExit)) {
        logReason(reasonFor(Answer::Dismissed));
        return refuse(Answer::Dismissed);
    }
    if (run.exitedWith(refusedExit)) {
        logReason("pkexec did not run the worker");
        return refuse(Answer::Refused);
    }
    return failureWithoutAnswer(run);
}

CloakWorkerResult SecurityController::refuse(Answer answer) {
    m_status = statusFrom(answer);
    return failure(WorkerError::NotEnoughRights);
}

} // namespace veilkeep
