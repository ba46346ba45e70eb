#pragma once

#include "platform/linux/filemanagers/LinuxFileManagerMenu.h"
#include "tests/support/ScratchTree.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace veilkeep::test {

// A home, file managers that are nothing but names, and a bundle with the product's templates, whose program
// writes the arguments that it gets to the file "arguments", each with a NUL after it.
class MenuWorld {
public:
    explicit MenuWorld(const std::string& bundle = "Veilkeep.app");

    void addManagers(const std::vector<std::string>& programs) const;
    LinuxFileManagerMenu menu(const std::string& version = "1.0") const;

    std::string data(const std::string& relative) const { return tree.path("home/.local/share/" + relative); }
    std::string config(const std::string& relative) const { return tree.path("home/.config/" + relative); }

    // Everything in the home by its relative path: the mode, and a file's content or a link's target.
    using Home = std::map<std::string, std::string>;
    Home home() const;

    const ScratchTree tree;
    std::string bundle;
    std::string program;
    mutable std::set<std::string> running; // names on the bus
};

} // namespace veilkeep::test
