#pragma once

#include "tests/support/ListWorld.h"

#include <memory>
#include <string>
#include <vector>

namespace veilkeep::test {

// A list in a scratch tree of its own, with a clock and a current group to set.
struct StoreWorld {
    ScratchTree tree;
    ChosenGroup group;
    TimePoint now{std::chrono::sys_days{std::chrono::year{2026} / 1 / 31}};
    std::unique_ptr<ListWorld> world;

    StoreWorld() { open(); }
    ListWorld* operator->() const { return world.get(); }

    void open() { // as the next start of the program finds it
        ListWorldOptions options;
        options.groups = &group;
        options.file.clock = [this] { return now; };
        world = std::make_unique<ListWorld>(options);
    }

    static std::string dataPath() { return OwnPlaces::current().dataDirectory + "/FilesInfo.Veilkeep"; }

    std::vector<std::string> listed() const {
        std::vector<std::string> paths;
        for (const ListedFile& file : world->list->files().all())
            paths.emplace_back(file->originalPath());
        return paths;
    }

    std::vector<std::string> saved() const {
        std::vector<std::string> paths;
        const auto files = world->list->readFilesInfoFileAtPath(dataPath());
        for (const File& file : files.value_or(std::vector<File>()))
            paths.emplace_back(file.originalPath());
        return paths;
    }
};

inline File fileOf(std::string_view path, std::string_view originalPath, std::int64_t groupID = 0,
                   std::int32_t state = File::Visible) {
    File file;
    file.setPath(path);
    file.setOriginalPath(originalPath);
    file.setGroupID(groupID);
    file.setState(state);
    return file;
}

} // namespace veilkeep::test
