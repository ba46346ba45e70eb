#pragma once

#include "core/records/FileSystemHelpers.h"

#include <QCoreApplication>
#include <QLocale>
#include <QString>

#include <cstdint>

namespace veilkeep {

// A record's size as the table shows it.
inline QString sizeText(std::uint64_t size) {
    if (size == unknownFileSize)
        return QCoreApplication::translate("FilesTableModel", "N/A");
    return QLocale().formattedDataSize(static_cast<qint64>(size), 1, QLocale::DataSizeSIFormat);
}

} // namespace veilkeep
