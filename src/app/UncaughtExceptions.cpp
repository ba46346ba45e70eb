#include "app/UncaughtExceptions.h"

#include "core/log/Log.h"
#include "session/CrashHandler.h"
#include "session/ProblemReport.h"

#include <cxxabi.h>
#include <execinfo.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <memory>
#include <typeinfo>

namespace veilkeep {
namespace {

std::string currentTypeName() {
    const std::type_info* const type = abi::__cxa_current_exception_type();
    if (!type)
        return "unknown";
    struct Free {
        void operator()(char* text) const { std::free(text); }
    };
    int status = 0;
    const std::unique_ptr<char, Free> name(abi::__cxa_demangle(type->name(), nullptr, nullptr, &status));
    return status == 0 && name ? name.get() : type->name();
}

// On the thread that threw, whose stack is still there. The next start reports what the crash note says.
[[noreturn]] void endWithReport() {
    static std::atomic_flag hasBegun;
    if (hasBegun.test_and_set())
        std::abort();
    const std::string type = currentTypeName();
    logLine("The program ends with an exception that nobody caught: " + type);
    if (crashHandler::noteException(type.c_str()))
        std::abort();
    ProblemReport report;
    report.reason = QString::fromStdString(type);
    std::array<void*, 64> frames{};
    const int count = ::backtrace(frames.data(), static_cast<int>(frames.size()));
    report.stack.assign(frames.begin(), frames.begin() + count);
    if (const auto written = ProblemReport::write(report.text()); !written)
        logError("The problem report could not be written", written.error());
    std::abort();
}

} // namespace

UncaughtException UncaughtException::from(const std::exception_ptr& exception) {
    try {
        std::rethrow_exception(exception);
    } catch (const std::exception& error) {
        return {currentTypeName(), error.what()};
    } catch (...) {
        return {currentTypeName(), {}};
    }
}

void reportWhatEndsTheProgram() {
    std::set_terminate(endWithReport);
}

bool UncaughtException::isToBeIgnored() const {
    if (name.find("NSAccessibilityException") != std::string::npos) {
        logLine("Error: Ignored NSAccessibilityException");
        return true;
    }
    if (reason.find("SIMBL") != std::string::npos) {
        logLine("Ignored exception: " + reason);
        return true;
    }
    return false;
}

} // namespace veilkeep
