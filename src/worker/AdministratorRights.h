#pragma once

#include "core/environment/UserDatabase.h"

#include <optional>

namespace veilkeep {

// A worker that pkexec has started: root, with the number of the user who asked for that in PKEXEC_UID. The
// number is all that is known of who asked; whatever else the caller sends might be an attack. Root without
// PKEXEC_UID is the root user himself.
bool hasAdministratorRights();

// Who asked for the rights; nothing where PKEXEC_UID is not the clean number of a user in the user database.
std::optional<User> userOfAdministratorRights();

// From now on, and for good, this process is an ordinary one of that user, with his places in the environment
// and nothing else. False where that could not be done or could be undone: then no file may be written.
bool giveUpAdministratorRights(const User& user);

} // namespace veilkeep
