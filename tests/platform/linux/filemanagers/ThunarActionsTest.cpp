#include "platform/linux/filemanagers/ThunarActions.h"

#include <gtest/gtest.h>

#include <string>

namespace veilkeep::test {
namespace {

using namespace std::string_literals;

const EntryMark mark{"1.0", 2, "-"};
const std::string marked = "<!-- com.ostrel.Veilkeep 1.0 2 - -->\n";

std::string action(const std::string& identifier, const std::string& command) {
    return "<action>\n\t<name>N</name>\n\t<unique-id>" + identifier + "</unique-id>\n\t<command>" + command +
           "</command>\n</action>\n";
}
const std::string ours = action("com.ostrel.Veilkeep.hide", "v --hide %U"),
                  users = action("17-1", "other %f");

TEST(ThunarActions, OursComeAtTheEndAndGoAgainToTheByte) {
    const struct {
        const char* what;
        std::string before, after; // our actions
    } rows[] = {
        {"empty", "<actions>", "</actions>"},
        {"as Thunar writes it", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<actions>\n" + users,
         "</actions>\n"},
        {"a document type, comments and references",
         "<?xml version='1.0' encoding='utf-8'?>\r\n<!DOCTYPE actions [\n<!ELEMENT actions (action)+>\n"
         "<!ELEMENT name (#PCDATA)>\n<!ATTLIST name xml:lang CDATA #IMPLIED>\n]>\n<!-- </actions> -->\n"
         "<actions >\n<!-- com.ostrel.Veilkeep -->\n<action><name>&lt;&#228;&amp; \u00fc \U0001f600</name>"
         "<command><![CDATA[</actions>]]></command></action>\n",
         "</actions\n>\n<!-- end -->\n\n"},
        {"identifiers that resemble ours",
         "<actions>\n" + action("x.com.ostrel.Veilkeep.hide", "") + action("com.ostrel.Veilkeeper", ""),
         "</actions>\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const auto parsed = ThunarActions::parse(row.before + row.after);
        ASSERT_TRUE(parsed);
        EXPECT_TRUE(parsed->commands().empty());
        const std::string with = parsed->with(ours, mark);
        EXPECT_EQ(with, row.before + marked + ours + row.after);
        const auto again = ThunarActions::parse(with);
        ASSERT_TRUE(again);
        EXPECT_EQ(again->commands().at("com.ostrel.Veilkeep.hide"), "v --hide %U");
        EXPECT_EQ(again->mark()->directories, 2);
        EXPECT_EQ(again->with(ours, mark), with);
        EXPECT_EQ(again->without(), row.before + row.after);
    }
}

TEST(ThunarActions, OursAreKnownWhereverTheyAre) {
    const auto parsed =
        ThunarActions::parse("<actions>\n" + ours + users + marked + users +
                             action("com.ostrel.Veilkeep.show", "a &quot;b&quot;") + "</actions>\n");
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->commands().at("com.ostrel.Veilkeep.show"), "a \"b\"");
    EXPECT_EQ(parsed->without(), "<actions>\n" + users + users + "</actions>\n");
}

TEST(ThunarActions, WhatIsNoSuchListIsLeftAlone) {
    for (const std::string& text :
         {""s, "<actions>"s, "<actions/>"s, "<other></other>"s, "<actions></actions><actions></actions>"s,
          "<actions><action></actions>"s, "<actions>&undefined;</actions>"s, "<actions>\xff</actions>"s,
          "<?xml version='1.0' encoding='ISO-8859-1'?><actions></actions>"s, "<actions></actions>\0"s})
        EXPECT_FALSE(ThunarActions::parse(text)) << text;
}

} // namespace
} // namespace veilkeep::test
