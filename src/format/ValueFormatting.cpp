#include "format/ValueFormatting.h"

#include "core/base/PathText.h"
#include "core/environment/XdgDirectories.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/records/FileSystemHelpers.h"
#include "core/records/PropertyDictionary.h"
#include "core/tracking/FileIdentity.h"
#include "format/PrintableName.h"

#include <dirent.h>
#include <fcntl.h>

#include <QCoreApplication>
#include <QLocale>

#include <cmath>
#include <memory>
#include <variant>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(ValueFormatting)
};

struct SizeUnits {
    std::uint64_t block, kilobyte, megabyte, gigabyte;
};

constexpr SizeUnits decimalUnits{4000, 1000, 1'000'000, 1'000'000'000};
constexpr SizeUnits binaryUnits{4096, 1024, 1'048'576, 1'073'741'824};

// An exact multiple gains a block as well, as file managers of that system have it.
std::uint64_t inWholeBlocks(std::uint64_t size, std::uint64_t block) {
    return size < block ? block : (size / block + 1) * block;
}

// With two digits after the point at most: rounded to them in single precision, and what that cannot hold
// exactly is cut off.
QString numberOfUnits(std::uint64_t size, std::uint64_t unit) {
    const float hundredths = std::round(static_cast<float>(size) * 100.0F / static_cast<float>(unit));
    const double number = static_cast<double>(hundredths / 100.0F);
    QLocale locale;
    locale.setNumberOptions(locale.numberOptions() | QLocale::OmitGroupSeparator);
    return locale.toString(std::trunc(number * 100) / 100, 'f', QLocale::FloatingPointShortest);
}

std::uint64_t unsignedValue(const Value& value) {
    if (const auto* const real = std::get_if<double>(&value.content()))
        return static_cast<std::uint64_t>(static_cast<std::int64_t>(*real));
    if (const auto number = value.asUnsigned())
        return *number;
    return static_cast<std::uint64_t>(value.asInteger().value_or(0));
}

std::uint64_t sumOf(const ValueList& sizes) {
    std::uint64_t sum = 0;
    for (const Value& size : sizes) {
        if (const std::uint64_t number = unsignedValue(size); number != unknownFileSize)
            sum += number;
    }
    return sum;
}

std::string withHome(const std::string& path) {
    const bool beginsAtHome = path == "~" || path.starts_with("~/");
    return beginsAtHome ? homeDirectory() + path.substr(1) : path;
}

std::optional<FileIdentity> identityAt(const std::string& path) {
    const std::string place = withHome(path);
    if (place.empty())
        return std::nullopt;
    const UniqueFd item = openItemAt(place);
    if (!item)
        return std::nullopt;
    const auto status = statusOfItem(item.get());
    return status ? std::optional(status->identity) : std::nullopt;
}

QString shortText(const QDateTime& instant) {
    return QLocale().toString(instant, QLocale::ShortFormat);
}

QString unknownText() {
    return Texts::tr("Unknown");
}

} // namespace

QString stringSizeFromLong(std::int64_t size, double systemVersion) {
    if (size == -1)
        return Texts::tr("N/A");
    if (size == 0)
        return Texts::tr("Zero KB");
    const SizeUnits units = isSnowLeopardOrBetter(systemVersion) ? decimalUnits : binaryUnits;
    const std::uint64_t taken = inWholeBlocks(static_cast<std::uint64_t>(size), units.block);
    if (taken <= units.megabyte)
        return Texts::tr("%1 KB").arg(numberOfUnits(taken, units.kilobyte));
    if (taken <= units.gigabyte)
        return Texts::tr("%1 MB").arg(numberOfUnits(taken, units.megabyte));
    return Texts::tr("%1 GB").arg(numberOfUnits(taken, units.gigabyte));
}

QString placeWithTilde(std::string_view path) {
    const std::string homeText = homeDirectory();
    const std::string_view home = withoutTrailingSlashes(homeText);
    if (home.empty() || home == "/" || !isSameOrBelow(path, home))
        return shownPath(path);
    return QLatin1Char('~') + shownPath(path.substr(home.size()));
}

QString SizeToStringValueTransformer::transformedValue(const Value& value) {
    if (const auto* const list = std::get_if<std::shared_ptr<const ValueList>>(&value.content()))
        return stringSizeFromLong(static_cast<std::int64_t>(sumOf(**list)));
    return stringSizeFromLong(static_cast<std::int64_t>(unsignedValue(value)));
}

QString NumberOfFilesInDirectoryValueTransformer::transformedValue(const Value& value) {
    const auto* const dictionary = std::get_if<std::shared_ptr<const PropertyDictionary>>(&value.content());
    if (!dictionary)
        return Texts::tr("N/A");
    const Value* const size = (*dictionary)->find("Size");
    const Value* const path = (*dictionary)->find("Path");
    const std::string place(path ? path->asString().value_or("") : "");
    return text(SizeToStringValueTransformer::transformedValue(size ? *size : Value()),
                numberOfEntriesAt(place));
}

QString NumberOfFilesInDirectoryValueTransformer::text(const QString& size, std::size_t entries) {
    return entries < 2 ? size : size + Texts::tr(" for %n items", nullptr, static_cast<int>(entries));
}

std::size_t numberOfEntriesAt(const std::string& path) {
    const std::string place = withHome(path);
    if (!place.starts_with('/'))
        return 0;
    UniqueFd descriptor = openDirectoryInPieces(place, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(descriptor ? ::fdopendir(descriptor.get()) : nullptr,
                                                        ::closedir);
    if (!directory)
        return 0;
    descriptor.release(); // the stream closes it
    std::size_t count = 0;
    while (const dirent* const entry = ::readdir(directory.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            ++count;
    }
    return count;
}

QString CreationDateValueTransformer::transformedValue(const std::string& path) {
    const auto identity = identityAt(path);
    if (!identity || !identity->birthTime)
        return text(std::nullopt);
    return text(ClassicTimestamp::fromFileTime(*identity->birthTime));
}

QString CreationDateValueTransformer::text(const std::optional<ClassicTimestamp>& created) {
    return created ? shortText(created->dateTime()) : unknownText();
}

QString ModificationDateValueTransformer::transformedValue(const std::string& path) {
    const auto identity = identityAt(path);
    if (!identity)
        return text(std::nullopt);
    return text(QDateTime::fromSecsSinceEpoch(identity->modificationTime.seconds));
}

QString ModificationDateValueTransformer::text(const std::optional<QDateTime>& modified) {
    return modified ? shortText(*modified) : unknownText();
}

QString VisibleValueTransformer::transformedValue(std::int64_t isHidden) {
    return isHidden != 0 ? QStringLiteral("hidden") : QStringLiteral("visible");
}

QString SelectionTabValueTransformer::transformedValue() {
    return Texts::tr("Info");
}

} // namespace veilkeep
