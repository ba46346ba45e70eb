#include "core/records/Group.h"

#include "core/records/Properties.h"

#include <utility>

namespace veilkeep {
namespace {

struct Keys {
    PropertyKey name = "Name";
    PropertyKey predicate = "Predicate";
    PropertyKey groupID = "GroupID";
    PropertyKey header = "Header";
    PropertyKey canBeRemoved = "CanBeRemoved";
    PropertyKey count = "Count";
    PropertyKey icon = "Icon";
    PropertyKey iconPath = "IconPath";
    PropertyKey state = "State";
    PropertyKey autoHide = "AutoHide";
};

const Keys& keys() {
    static const Keys shared;
    return shared;
}

PropertyDictionary namedProperties(const std::string& name, std::int64_t groupID, bool isHeaderRow) {
    return {{keys().canBeRemoved, !isHeaderRow},
            {keys().predicate, groupID},
            {keys().header, isHeaderRow},
            {keys().name, Bytes{name}},
            {keys().count, std::int64_t{0}},
            {keys().icon, Bytes{}},
            {keys().iconPath, Bytes{Group::defaultIconName}},
            {keys().state, std::int64_t{0}}};
}

// Wraps around, so that no stored number is a trap.
std::int64_t sum(std::int64_t number, std::int64_t step) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(number) + static_cast<std::uint64_t>(step));
}

} // namespace

Group::Group()
    : m_properties({{keys().canBeRemoved, true},
                    {keys().groupID, std::int64_t{0}},
                    {keys().header, false},
                    {keys().name, Bytes{"Group Name"}},
                    {keys().count, std::int64_t{0}},
                    {keys().icon, Bytes{}},
                    {keys().iconPath, Bytes{defaultIconName}},
                    {keys().state, std::int64_t{0}},
                    {keys().autoHide, false}}) {}

Group::Group(PropertyDictionary properties) : m_properties(std::move(properties)) {}

Group Group::initWithName(const std::string& name, std::int64_t andGroupID) {
    return Group(namedProperties(name, andGroupID, false));
}

Group Group::initWithHeaderRowWithName(const std::string& name) {
    return Group(namedProperties(name, 0, true));
}

Group Group::groupWithName(const std::string& name, std::int64_t andID) {
    return initWithName(name, andID);
}

Group Group::headerGroupWithName(const std::string& name) {
    return initWithHeaderRowWithName(name);
}

void Group::setProperties(PropertyDictionary properties) {
    if (!(properties == m_properties))
        m_properties = std::move(properties);
}

std::string_view Group::name() const {
    return bytesProperty(m_properties, keys().name);
}

void Group::setName(std::string_view name) {
    m_properties.set(keys().name, Bytes{name});
}

std::string_view Group::iconPath() const {
    return bytesProperty(m_properties, keys().iconPath);
}

void Group::setIconPath(std::string_view iconPath) {
    m_properties.set(keys().iconPath, Bytes{iconPath});
}

std::string_view Group::iconData() const {
    return bytesProperty(m_properties, keys().icon);
}

void Group::setIconData(Bytes iconData) {
    m_properties.set(keys().icon, std::move(iconData));
}

std::optional<std::int64_t> Group::groupID() const {
    const Value* const value = m_properties.find(keys().predicate);
    return value ? value->asInteger() : std::nullopt;
}

void Group::setGroupID(std::int64_t groupID) {
    m_properties.set(keys().predicate, groupID);
}

std::int64_t Group::countOfFiles() const {
    return integerProperty(m_properties, keys().count);
}

void Group::setCountOfFiles(std::int64_t countOfFiles) {
    m_properties.set(keys().count, countOfFiles);
}

void Group::incCountOfFiles() {
    setCountOfFiles(sum(countOfFiles(), 1));
}

void Group::decCountOfFiles() {
    setCountOfFiles(sum(countOfFiles(), -1));
}

std::int8_t Group::state() const {
    return static_cast<std::int8_t>(integerProperty(m_properties, keys().state));
}

void Group::setState(std::int8_t state) {
    m_properties.set(keys().state, std::int64_t{state});
}

std::optional<bool> Group::autoHide() const {
    const Value* const value = m_properties.find(keys().autoHide);
    return value ? value->asBoolean() : std::nullopt;
}

void Group::setAutoHide(bool autoHide) {
    m_properties.set(keys().autoHide, autoHide);
}

bool Group::isHeaderRow() const {
    return booleanProperty(m_properties, keys().header);
}

bool Group::canBeRemoved() const {
    return booleanProperty(m_properties, keys().canBeRemoved);
}

void Group::setCanBeRemoved(bool canBeRemoved) {
    m_properties.set(keys().canBeRemoved, canBeRemoved);
}

} // namespace veilkeep
