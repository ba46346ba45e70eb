#include "core/records/Group.h"

#include <gtest/gtest.h>

#include <limits>

namespace veilkeep {
namespace {

PropertyDictionary named(const char* name, std::int64_t identifier, bool header) {
    return {{"CanBeRemoved", !header},
            {"Predicate", identifier},
            {"Header", header},
            {"Name", Bytes{name}},
            {"Count", std::int64_t{0}},
            {"Icon", Bytes{}},
            {"IconPath", Bytes{"folder-documents_alt"}},
            {"State", std::int64_t{0}}};
}

TEST(Group, HoldsTheStoredKeys) {
    PropertyDictionary plain = named("Group Name", 0, false);
    plain.remove("Predicate");
    plain.set("GroupID", std::int64_t{0});
    plain.set("AutoHide", false);
    EXPECT_EQ(Group().properties(), plain);
    EXPECT_EQ(Group::initWithName("Work", 5).properties(), named("Work", 5, false));
    EXPECT_EQ(Group::groupWithName("Work", 5).properties(), named("Work", 5, false));
    EXPECT_EQ(Group::initWithHeaderRowWithName("GROUPS").properties(), named("GROUPS", 0, true));
    EXPECT_EQ(Group::headerGroupWithName("GROUPS").properties(), named("GROUPS", 0, true));
}

TEST(Group, AccessorsReadAndWriteOneKey) {
    Group group = Group::initWithName("Work", 5);
    group.setName("Play");
    group.setGroupID(6);
    group.setIconPath("/icons/play.png");
    group.setIconData(Bytes{"\x89PNG"});
    group.setCountOfFiles(9);
    group.setState(-128);
    group.setAutoHide(true);
    group.setCanBeRemoved(false);
    EXPECT_EQ(group.properties(), (PropertyDictionary{{"CanBeRemoved", false},
                                                      {"Predicate", std::int64_t{6}},
                                                      {"Header", false},
                                                      {"Name", Bytes{"Play"}},
                                                      {"Count", std::int64_t{9}},
                                                      {"Icon", Bytes{"\x89PNG"}},
                                                      {"IconPath", Bytes{"/icons/play.png"}},
                                                      {"State", std::int64_t{-128}},
                                                      {"AutoHide", true}}));
    EXPECT_EQ(std::string(group.name()).append(group.iconPath()).append(group.iconData()),
              "Play/icons/play.png\x89PNG");
    EXPECT_EQ(group.groupID(), 6);
    EXPECT_EQ(group.countOfFiles(), 9);
    EXPECT_EQ(group.state(), -128);
    EXPECT_EQ(group.autoHide(), true);
    EXPECT_FALSE(group.canBeRemoved() || group.isHeaderRow());
    EXPECT_TRUE(Group::headerGroupWithName("x").isHeaderRow());
}

TEST(Group, TellsAbsentFromZero) {
    EXPECT_EQ(Group().groupID(), std::nullopt) << "though there is a GroupID";
    EXPECT_EQ(Group::initWithHeaderRowWithName("x").groupID(), 0);
    EXPECT_EQ(Group().autoHide(), false);
    EXPECT_EQ(Group::initWithName("x", 1).autoHide(), std::nullopt);
}

TEST(Group, CountsWithoutBounds) {
    constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
    Group group;
    group.decCountOfFiles();
    EXPECT_EQ(group.countOfFiles(), -1);
    group.incCountOfFiles();
    group.incCountOfFiles();
    EXPECT_EQ(group.countOfFiles(), 1);
    group.setCountOfFiles(least);
    group.decCountOfFiles();
    EXPECT_EQ(group.countOfFiles(), std::numeric_limits<std::int64_t>::max()) << "wraps, without a trap";
}

TEST(Group, KeepsUnknownKeys) {
    const PropertyDictionary later = {{"Colour", "red"}, {"State", std::int64_t{257}}};
    Group group;
    group.setProperties(later);
    EXPECT_EQ(group.properties(), later);
    EXPECT_EQ(Group(later).state(), 1) << "eight bits of it";
}

} // namespace
} // namespace veilkeep
