#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace veilkeep {

// What is dragged over the group list. A kind that the drag does not carry is absent.
struct GroupDrag {
    static constexpr const char* groupMovePasteboardType = "groupMovePBoardType";

    std::optional<std::vector<std::string>> filePaths = {}; // "filesPBoardType": of rows of the files table
    std::optional<std::vector<std::size_t>> groupRows = {}; // "groupMovePBoardType": of the group list itself
    std::optional<std::vector<std::string>> fileNames = {}; // of other programs: paths
};

// What a drop at a place would do.
struct DropAnswer {
    enum class Operation { None, Move, Copy };

    Operation operation = Operation::None;
    std::size_t row = 0;    // on which the drop falls, or above which, for groups
    bool selectRow = false; // while the drag is over it

    bool operator==(const DropAnswer&) const = default;
};

} // namespace veilkeep
