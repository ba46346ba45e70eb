#pragma once

#include "core/names/HiddenName.h"
#include "core/names/ProtectedListPredicate.h"

#include <optional>
#include <string>
#include <string_view>

namespace veilkeep {

// The rules of hiding, the same ones in the application and in the worker: how a hidden item is named, where
// its hidden directory stands, and which paths are never hidden. Class operations on absolute paths, callable
// from any thread.
class BaseCloakLogic {
public:
    static std::string encryptFileName(std::string_view name);

    // The path up to and with the last ".SYS_INDEX" in its text.
    static std::optional<std::string> cloakDirectory(std::string_view path);

    static std::string constructHidenFullFileName(std::string_view path, std::string_view cloakDirectory);

    // Every hidden level of the path named back; a path without one is answered unchanged. cloakDirectory is
    // not looked at.
    static std::string constructOriginalFullFileName(std::string_view path);
    static std::string constructOriginalFullFileName(std::string_view path, std::string_view cloakDirectory);

    // Where an unhide puts the item: only the last level is named back, and the rest keeps the caller's
    // spelling. cloakDirectory is not looked at.
    static std::string constructOriginalFullFileNameForUnhide(std::string_view path,
                                                              std::string_view cloakDirectory);

    // Both as the environment was at the first use of either.
    static const ProtectedListPredicate& protectedListPredicate();
    static bool isProtectedFileAtPath(const std::string& path);
};

} // namespace veilkeep
