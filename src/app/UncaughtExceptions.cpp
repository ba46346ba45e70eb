#include "app/UncaughtExceptions.h"

#include "core/log/Log.h"

#include <cxxabi.h>

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
