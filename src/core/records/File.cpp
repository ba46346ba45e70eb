#include "core/records/File.h"

#include "core/base/PathText.h"
#include "core/records/FileSystemHelpers.h"
#include "core/records/Properties.h"
#include "core/tracking/FileAlias.h"

#include <utility>

namespace veilkeep {
namespace {

struct Keys {
    PropertyKey groupID = "GroupID";
    PropertyKey name = "Name";
    PropertyKey path = "Path";
    PropertyKey size = "Size";
    PropertyKey originalPath = "OriginalPath";
    PropertyKey state = "State";
    PropertyKey isFile = "IsFile";
    PropertyKey alias = "Alias";
};

const Keys& keys() {
    static const Keys shared;
    return shared;
}

} // namespace

File::File()
    : m_properties({{keys().groupID, std::int64_t{0}},
                    {keys().name, Bytes{"Some path"}},
                    {keys().path, Bytes{"OriginalPath"}},
                    {keys().size, std::uint64_t{0}},
                    {keys().originalPath, Bytes{"OriginalPath"}},
                    {keys().state, std::int64_t{Visible}},
                    {keys().isFile, false},
                    {keys().alias, Bytes{}}}) {}

File::File(PropertyDictionary properties) {
    keep(std::move(properties));
}

File File::initWithPath(const std::string& path) {
    return initWithPath(path, Visible);
}

File File::initWithPath(const std::string& path, std::int32_t andState) {
    return initWithOriginalPath(path, path, andState);
}

File File::initWithOriginalPath(const std::string& originalPath, const std::string& andCurrentPath,
                                std::int32_t andState) {
    return File({{keys().groupID, std::int64_t{0}},
                 {keys().name, Bytes{std::string(lastPathComponent(originalPath))}},
                 {keys().path, Bytes{andCurrentPath}},
                 {keys().size, fileSizeNumberAtPath(andCurrentPath)},
                 {keys().originalPath, Bytes{originalPath}},
                 {keys().state, std::int64_t{andState}},
                 {keys().isFile, !isDirectoryAtPath(andCurrentPath)},
                 {keys().alias, Bytes{aliasRecordFromPath(andCurrentPath).value_or(std::string())}}});
}

File File::fileWithPath(const std::string& path) {
    return initWithPath(path);
}

File File::fileWithPath(const std::string& path, const std::string& andOriginalPath, std::int32_t andState) {
    return initWithOriginalPath(andOriginalPath, path, andState);
}

void File::setProperties(PropertyDictionary properties) {
    if (!(properties == m_properties))
        keep(std::move(properties));
}

void File::keep(PropertyDictionary properties) {
    m_properties = std::move(properties);
    if (!m_properties.contains(keys().alias))
        updateAlias();
}

std::string_view File::name() const {
    return bytesProperty(m_properties, keys().name);
}

void File::setName(std::string_view name) {
    m_properties.set(keys().name, Bytes{name});
}

std::string_view File::originalPath() const {
    return bytesProperty(m_properties, keys().originalPath);
}

void File::setOriginalPath(std::string_view originalPath) {
    m_properties.set(keys().originalPath, Bytes{originalPath});
}

std::string_view File::path() const {
    return bytesProperty(m_properties, keys().path);
}

std::string_view File::pathWithoutSync() const {
    return path();
}

void File::setPath(std::string_view path) {
    m_properties.set(keys().path, Bytes{path});
}

std::uint64_t File::size() const {
    return unsignedProperty(m_properties, keys().size);
}

void File::setSize(std::uint64_t size) {
    m_properties.set(keys().size, size);
}

bool File::isFile() const {
    return booleanProperty(m_properties, keys().isFile);
}

std::int64_t File::groupID() const {
    return integerProperty(m_properties, keys().groupID);
}

void File::setGroupID(std::int64_t groupID) {
    m_properties.set(keys().groupID, groupID);
}

std::int32_t File::state() const {
    return static_cast<std::int32_t>(integerProperty(m_properties, keys().state));
}

void File::setState(std::int32_t state) {
    m_prevState = this->state();
    m_properties.set(keys().state, std::int64_t{state});
}

std::optional<std::string_view> File::alias() const {
    const Value* const value = m_properties.find(keys().alias);
    return value ? value->asString() : std::nullopt;
}

void File::updateAlias() {
    const auto record = aliasRecordFromPath(std::string(path()));
    m_properties.set(keys().alias, record ? Value(Bytes{*record}) : Value(Null()));
}

} // namespace veilkeep
