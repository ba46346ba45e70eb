#pragma once

#include "filelist/FileListActions.h"
#include "tests/support/ListWorld.h"
#include "tests/support/gui/RealInput.h"
#include "widgets/filetable/FilesTableModel.h"
#include "widgets/filetable/FilesTableView.h"

#include <string>

namespace veilkeep::test {

// The list, the real worker, and what the table needs of both.
struct TableWorld {
    ScratchTree tree;
    RevealedPaths viewer;
    ChosenGroup group;
    ListWorld world{options()};
    FilesViewController& list = *world.list;
    FilesController& shown = list.filesController();
    FileListActions actions{list, world.alerts, nullptr};
    Previews previews{list.files()};

    ListedFile add(const std::string& name) { return world.add(tree.makeFile("items/" + name)); }
    ListedFile at(std::size_t position) const { return world.list->files().all()[position]; }

private:
    ListWorldOptions options() {
        ListWorldOptions own;
        own.fileViewer = &viewer;
        own.groups = &group;
        return own;
    }
};

} // namespace veilkeep::test
