#pragma once

#include "core/records/PropertyDictionary.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veilkeep {

// One group of files, or one header row of the group list. All of it is its one property dictionary, keys of
// later versions included. It is owned by the group list; not locked. Making images of the icon's bytes and
// back is the desktop application's.
class Group {
public:
    // The image of groups whose icon is missing or no image.
    static constexpr const char* defaultIconName = "folder-documents_alt";

    Group(); // reports no identifier

    // A record as it was stored.
    explicit Group(PropertyDictionary properties);

    static Group initWithName(const std::string& name, std::int64_t andGroupID);
    static Group initWithHeaderRowWithName(const std::string& name);
    static Group groupWithName(const std::string& name, std::int64_t andID);
    static Group headerGroupWithName(const std::string& name);

    const PropertyDictionary& properties() const { return m_properties; }
    void setProperties(PropertyDictionary properties);

    // A view lasts until its property is set.
    std::string_view name() const;
    void setName(std::string_view name);
    std::string_view iconPath() const;
    void setIconPath(std::string_view iconPath);
    std::string_view iconData() const; // PNG of 42 x 42, or empty
    void setIconData(Bytes iconData);

    // Stored under "Predicate", as group files always had it; "GroupID" is written by Group() and never read.
    std::optional<std::int64_t> groupID() const;
    void setGroupID(std::int64_t groupID);

    std::int64_t countOfFiles() const; // as it was last stored, no live count; may become negative
    void setCountOfFiles(std::int64_t countOfFiles);
    void incCountOfFiles();
    void decCountOfFiles();

    std::int8_t state() const; // 0 shown, 1 hidden
    void setState(std::int8_t state);
    std::optional<bool> autoHide() const; // absent counts as false
    void setAutoHide(bool autoHide);

    bool isHeaderRow() const;
    bool canBeRemoved() const;
    void setCanBeRemoved(bool canBeRemoved);

private:
    PropertyDictionary m_properties;
};

} // namespace veilkeep
