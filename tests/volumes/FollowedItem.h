#pragma once

#include "core/records/File.h"

#include <string>

namespace veilkeep::test {

// By the real cloakWorker; answers the new path and fails the test where there is none.
std::string hide(const std::string& path);
std::string unhide(const std::string& path);

// Where the record's item is, looked for on its whole volume.
AliasResolver::Answer whereIs(const File& file);

// That the record as it was made leads to the item at the path, with the state that goes with it.
void expectFound(const File& file, const std::string& path, const std::string& when);

void expectNotFound(const File& file, AliasResolver::Answer::Outcome outcome, const std::string& when);

// Makes missing parents; renames.
void move(const std::string& from, const std::string& to);

// A new file, with missing parents, and the record of it.
File makeItem(const std::string& path, const std::string& content = "content");

} // namespace veilkeep::test
