#pragma once

#include "filelist/FileListActions.h"
#include "tests/support/ListWorld.h"
#include "tests/support/gui/RealInput.h"
#include "widgets/filetable/FilesTableModel.h"
#include "widgets/filetable/FilesTableView.h"

#include <string>
#include <vector>

namespace veilkeep::test {

struct RevealedPaths : FileViewer {
    void selectFile(const std::string& path) override { revealed.push_back(path); }
    std::vector<std::string> revealed;
};

struct ChosenGroup : CurrentGroup {
    std::int64_t chosen = allFiles;
    std::int64_t currentGroupID() const override { return chosen; }
};

// A record of which nothing lies on the disk.
inline File listedOnly(const std::string& name, std::int32_t state = File::Visible,
                       std::uint64_t size = 1500) {
    return File({{"Name", Bytes{name}},
                 {"Path", Bytes{"/h/" + name}},
                 {"OriginalPath", Bytes{"/h/" + name}},
                 {"State", std::int64_t{state}},
                 {"Size", size},
                 {"IsFile", true},
                 {"GroupID", std::int64_t{0}},
                 {"Alias", Bytes{}}});
}

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
