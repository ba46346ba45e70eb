#pragma once

#include "core/records/Value.h"
#include "format/ClassicTimestamp.h"
#include "format/SystemVersion.h"

#include <QDateTime>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Stored values as text in the user's language and locale. What looks at the disk says so, and takes a path
// of bytes, a leading "~" standing for the home folder; any thread.
namespace veilkeep {

// -1, all bits set, is a size that is not known.
QString stringSizeFromLong(std::int64_t size, double systemVersion = newestSystem);

// The place as it is shown, the home folder as "~".
QString placeWithTilde(std::string_view path);

// A number, or the sum of a list of numbers in which unknown sizes are passed over; zero for anything else.
struct SizeToStringValueTransformer {
    static QString transformedValue(const Value& value);
};

// The size and how much is in the folder, of a dictionary with "Size" and "Path". Reads one directory.
struct NumberOfFilesInDirectoryValueTransformer {
    static QString transformedValue(const Value& value);
    static QString text(const QString& size, std::size_t entries);
};

// Direct entries, hidden ones too; 0 for what is no folder. Reads the directory.
std::size_t numberOfEntriesAt(const std::string& path);

// Of the item itself, no link followed. Reads its status.
struct CreationDateValueTransformer {
    static QString transformedValue(const std::string& path);
    static QString text(const std::optional<ClassicTimestamp>& created);
};

struct ModificationDateValueTransformer {
    static QString transformedValue(const std::string& path);
    static QString text(const std::optional<QDateTime>& modified);
};

// The name of the image that shows whether an item is hidden.
struct VisibleValueTransformer {
    static QString transformedValue(std::int64_t isHidden);
};

struct SelectionTabValueTransformer {
    static QString transformedValue();
};

} // namespace veilkeep
