#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

struct User {
    unsigned int id = 0;
    unsigned int group = 0; // the first one
    std::string home;       // empty where the entry has no absolute path
};

// The number of a user as the system writes it: decimal digits alone, no zero before them.
std::optional<unsigned int> userIdFromText(std::string_view text);

// What the system's user database says of a user; nothing where there is no entry.
std::optional<User> userInDatabase(unsigned int uid);

// The home directory that the system's user database gives for a user; empty where the user has no entry or
// an entry without an absolute path.
std::string homeInUserDatabase(unsigned int uid);

// The home directories of all users in the local file, absolute ones only. Users that the name services alone
// know are left out: there may be any number of them.
std::vector<std::string> homesInLocalFile();

} // namespace veilkeep
