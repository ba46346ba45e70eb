#pragma once

#include "groups/GroupViewController.h"

#include <QString>

#include <cstdint>
#include <string>

namespace veilkeep {

// What the information pane says of the selected items without looking at the disk.
struct InfoFacts {
    QString name, state, badge, size, where, group; // the badge is an image's name
};

InfoFacts infoFacts(const FilesViewController::Files& selected, const GroupViewController& groups);

// One item, copied so that another thread can look at it.
struct ItemToLookAt {
    std::string path;
    std::uint64_t size = 0;
    bool isFile = true;
};

struct FactsOnDisk {
    QString size, created, modified;
};

FactsOnDisk factsOnDisk(const ItemToLookAt& item); // any thread

} // namespace veilkeep
