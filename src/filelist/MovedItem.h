#pragma once

#include "filelist/FileList.h"

#include <QString>

#include <cstdint>

namespace veilkeep {

// What became of one item of a batch, for who tells it once the batch is through.
struct MovedItem {
    ListedFile file;
    std::int32_t errorCode = 0; // of the worker; 0 as well where nothing was to be done
    QString reason;             // what the error list would show; empty for 0
    bool wasMoved = false;
};

} // namespace veilkeep
