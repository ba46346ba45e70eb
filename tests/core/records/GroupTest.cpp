#include "core/records/Group.h"

#include <gtest/gtest.h>

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
    EXPECT_EQ(Group::initWithHeaderRowWithName("GROUPS").properties(), named("GROUPS", 0, true));
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
