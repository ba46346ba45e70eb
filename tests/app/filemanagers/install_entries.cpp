// install_entries install|remove BUNDLE: puts the entries that start the bundle's program into the menus of
// the file managers, as the preferences do, and prints the files that changed.

#include "platform/linux/filemanagers/LinuxFileManagerMenu.h"

#include <QCoreApplication>

#include <iostream>

int main(int count, char** arguments) {
    using namespace veilkeep;
    const QCoreApplication application(count, arguments);
    if (count != 3)
        return 2;
    LinuxFileManagerMenu menu({.bundle = arguments[2], .version = "1.0"});
    const FileManagerChange change = arguments[1] == std::string("install") ? menu.install() : menu.remove();
    for (const std::string& path : change.changed)
        std::cout << path << "\n";
    return change.hasFailed() ? 1 : 0;
}
