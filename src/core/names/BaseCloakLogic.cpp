#include "core/names/BaseCloakLogic.h"

#include "core/base/PathText.h"
#include "core/names/ProtectedPaths.h"

namespace veilkeep {
namespace {

const ProtectedPaths& protectedPaths() {
    static const ProtectedPaths paths(LinuxProtectedPaths::Surroundings::current());
    return paths;
}

} // namespace

std::string BaseCloakLogic::encryptFileName(std::string_view name) {
    return scrambledName(name);
}

std::optional<std::string> BaseCloakLogic::cloakDirectory(std::string_view path) {
    const auto found = path.rfind(hiddenDirectoryName);
    if (found == std::string_view::npos)
        return std::nullopt;
    return std::string(path.substr(0, found + hiddenDirectoryName.size()));
}

std::string BaseCloakLogic::constructHidenFullFileName(std::string_view path,
                                                       std::string_view cloakDirectory) {
    return joinPath(cloakDirectory, encryptFileName(lastPathComponent(path)));
}

std::string BaseCloakLogic::constructOriginalFullFileName(std::string_view path) {
    return constructOriginalFullFileName(path, cloakDirectory(path).value_or(std::string()));
}

std::string BaseCloakLogic::constructOriginalFullFileName(std::string_view path,
                                                          std::string_view /*cloakDirectory*/) {
    std::string original;
    bool hiddenDirectoryPassed = false, anyPassed = false;
    for (const std::string_view component : pathComponents(path)) {
        if (component == hiddenDirectoryName) {
            hiddenDirectoryPassed = anyPassed = true;
            continue;
        }
        original =
            joinPath(original, hiddenDirectoryPassed ? visibleName(component) : std::string(component));
        hiddenDirectoryPassed = false;
    }
    return anyPassed ? original : std::string(path);
}

std::string BaseCloakLogic::constructOriginalFullFileNameForUnhide(std::string_view path,
                                                                   std::string_view /*cloakDirectory*/) {
    return joinPath(parentPath(parentPath(path)), visibleName(lastPathComponent(path)));
}

const ProtectedListPredicate& BaseCloakLogic::protectedListPredicate() {
    return protectedPaths().predicate();
}

bool BaseCloakLogic::isProtectedFileAtPath(const std::string& path) {
    return protectedPaths().contains(path);
}

} // namespace veilkeep
