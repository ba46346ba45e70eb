#pragma once

#include "core/filesystem/Place.h"

#include <sys/stat.h>

#include <string>

namespace veilkeep {

// What a move in two steps that was cut off can leave behind at the place that the item is not at.
enum class MoveLeftover {
    None,
    SecondName, // of the item itself, which is no directory
    PlaceholderFile,
    PlaceholderDirectory, // perhaps: only an empty one can be removed
};

// Placeholders are made with mode 0 and are never changed: an empty file with one name or a directory,
// changed last within a second after its content was. File systems that keep no modes show them with one;
// there they cannot be told from items.
bool isPlaceholder(const struct stat& status);
bool isPlaceholderAt(const std::string& path);

// What is at `other` beside the item at `kept`. None where `kept` holds no item but nothing or a placeholder
// itself. Certain only under the lock that movers in two steps hold.
MoveLeftover leftoverAt(const Place& other, const Place& kept);

// 0 or errno; 0 also for what is gone already.
int removeLeftover(const Place& place, MoveLeftover leftover);

} // namespace veilkeep
