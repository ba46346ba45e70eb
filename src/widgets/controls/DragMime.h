#pragma once

#include <QDropEvent>
#include <QMimeData>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace veilkeep {

// Paths and rows in a drag, byte for byte: under "filesPBoardType" paths of rows of the files table, under
// "groupMovePBoardType" rows of the group list, under text/uri-list the files that other programs may have.
// Readers believe nothing: what is cut off, too large or empty counts as not carried.
namespace dragMime {

void setPaths(QMimeData& data, const std::vector<std::string>& rowPaths);
std::optional<std::vector<std::string>> paths(const QMimeData& data);      // nothing where it carries none
std::optional<std::vector<std::string>> ownPaths(const QDropEvent& event); // nor where another program drags

void setRows(QMimeData& data, const std::vector<std::size_t>& rows);
std::optional<std::vector<std::size_t>> rows(const QMimeData& data);

// file: URIs of this computer; others are left out.
void setFileNames(QMimeData& data, const std::vector<std::string>& paths);
std::optional<std::vector<std::string>> fileNames(const QMimeData& data);

} // namespace dragMime

} // namespace veilkeep
