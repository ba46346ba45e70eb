#pragma once

#include "requests/RequestWork.h"

#include <cstdint>

namespace veilkeep {

// "hidden", "visible" or "broken", as requests and answers name it.
QString stateName(std::int32_t state);

// What "list" tells of a record. Paths and names are QByteArrays, bytes as they are:
//   path, originalPath, name; state: stateName(); group: qlonglong; kind: "file" or "folder";
//   size: qulonglong, absent where it is not known.
QVariantMap listRow(const File& file);

// "list": a row for each record that the request's options let through, many rows at a time.
void tellList(RequestWork& work);

// "status": one row of numbers, items, hidden, visible, broken (qulonglong), and saveTrouble, a text, where
// the last save failed. Names nothing.
void tellStatus(RequestWork& work);

} // namespace veilkeep
