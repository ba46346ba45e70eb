#pragma once

#include "core/records/PropertyDictionary.h"
#include "core/tracking/AliasResolver.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace veilkeep {

// One listed file or folder. All that is stored of it is its one property dictionary, keys of later versions
// included; everything here reads or writes one key of that. It is owned by the file list; not locked.
// Making one never fails: a path with nothing at it gives size 0, "is a file" and an alias of the path.
class File {
public:
    enum State : std::int32_t {
        Broken = -1, // nothing at the recorded path, and not found elsewhere
        Visible = 0, // at its original path
        Hidden = 1,  // under its scrambled name in a hidden directory
    };

    File();

    // A record as it was stored.
    explicit File(PropertyDictionary properties);

    static File initWithPath(const std::string& path);
    static File initWithPath(const std::string& path, std::int32_t andState);
    static File initWithOriginalPath(const std::string& originalPath, const std::string& andCurrentPath,
                                     std::int32_t andState);
    static File fileWithPath(const std::string& path);
    static File fileWithPath(const std::string& path, const std::string& andOriginalPath,
                             std::int32_t andState);

    const PropertyDictionary& properties() const { return m_properties; }

    // Equal properties change nothing; properties without an alias gain one.
    void setProperties(PropertyDictionary properties);

    // Paths and names are bytes; a reference lives until its property is set.
    std::string_view name() const;
    void setName(std::string_view name);
    std::string_view originalPath() const;
    void setOriginalPath(std::string_view originalPath);
    std::string_view path() const;            // as stored: the disk is not looked at
    std::string_view pathWithoutSync() const; // the same, for who must say so
    void setPath(std::string_view path);      // the alias stays as it was
    std::string_view description() const { return originalPath(); }

    std::uint64_t size() const; // bytes, or unknownFileSize, as it was when the record was made
    void setSize(std::uint64_t size);
    bool isFile() const; // was no directory when the record was made
    std::int64_t groupID() const;
    void setGroupID(std::int64_t groupID);
    void moveToGroup(std::int64_t groupID) { setGroupID(groupID); }

    std::int32_t state() const;
    void setState(std::int32_t state);
    std::int32_t prevState() const { return m_prevState; } // before the last setState(); not stored

    std::optional<std::string_view> alias() const; // nothing where none could be made; lives like a path
    void updateAlias();                            // of what is at path() now

    // Where the item is now. Things exist as they are themselves: a link wherever it leads. Below the places
    // where removable and network volumes are mounted an absent volume is mounted only with `mount`; of any
    // other path silently as well. Nobody is asked on the way but with `mount`, and only where the resolver
    // has a mounter.
    std::optional<std::string> newPathWithMount(AliasResolver& resolver, bool mount) const;
    std::optional<std::string> newPath(AliasResolver& resolver) const;
    // Whether something exists at path(), or else where the alias leads; path, state and name follow it
    // there.
    bool checkPathesConsistencyWithMount(AliasResolver& resolver, bool mount);
    bool checkPathesConsistency(AliasResolver& resolver);
    // Takes the path over unless something exists at path(), and derives state, original path and name from
    // it; broken, with the names left as they are, when nothing exists there. Nothing stands for path(). The
    // alias stays as it was.
    void syncPathWithNewPath(const std::optional<std::string>& newPath);
    void syncPathWithAlias(AliasResolver& resolver);
    std::int32_t stateFromPath() const;   // by path() alone
    std::int32_t stateFromPlace() const;  // the same, but hidden as well where only a folder above is
    bool isWhereVolumesComeAndGo() const; // below where removable and network volumes are mounted
    std::optional<std::string> closestHiddenDir() const; // the top hidden item that holds this one

    // For checks and before a hide: makes sure that what is at path() is the item of the alias. When it is
    // another one (an editor saved by replacing), the item is looked for nearby: found, the record follows
    // it; else the alias is renewed.
    // Not renewed to an item of which the function says that it is another record's.
    enum class IdentityCheck { NothingThere, Confirmed, Renewed, FollowedElsewhere, AnothersItemThere };
    using IsAnothers = std::function<bool(const AliasRecord& item)>;
    IdentityCheck checkIdentity(const IsAnothers& isAnothers = {});

    // Whether that would confirm it and change nothing. Changes nothing of the record itself: any thread, as
    // long as no other changes it.
    bool isCertainlyAtItsPlace() const;

    // After a move: the alias is renewed first, and the rest follows from it.
    void movedTo(std::string_view path);

private:
    IdentityCheck compareWithAlias(const IsAnothers& isAnothers);
    void keep(PropertyDictionary properties);

    PropertyDictionary m_properties;
    std::int32_t m_prevState = 0;
};

} // namespace veilkeep
