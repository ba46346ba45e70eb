#include "worker/traces/BookmarkText.h"

#include <gtest/gtest.h>

namespace veilkeep {
namespace {

const std::string head = R"(<?xml version="1.0" encoding="UTF-8"?>
<xbel version="1.0"
      xmlns:bookmark="http://www.freedesktop.org/standards/desktop-bookmarks"
>
)";
const std::string entry = R"(  <bookmark href="file:///gone" added="2026-01-01T00:00:00Z">
    <title>a &lt;bookmark> &gt;</title>
    <info>
      <metadata owner="http://freedesktop.org">
        <bookmark:applications>
          <bookmark:application name="a" exec="&apos;a %u&apos;" count="1"/>
        </bookmark:applications>
      </metadata>
    </info>
  </bookmark>
)";
const std::string foreign = R"(	<!-- <bookmark href="file:///gone"> -->
  <folder unknown='x'><title>f</title></folder><?pi <bookmark ?>
  <bookmark  other="&gt;"
     href='file:///kept'><x:y xmlns:x="z">  </x:y><![CDATA[<bookmark href="file:///gone">]]></bookmark>
)";

bool isGone(const std::string& uri) {
    return uri == "file:///gone";
}

TEST(BookmarkText, KeepsEveryOtherByte) {
    struct Row {
        std::string name, text, rest;
    };
    const std::string oneLine = R"(<bookmark href="file:///gone"/>)", end = "</xbel>\n";
    const Row rows[] = {
        {"alone", head + entry + end, head + end},
        {"among foreign ones", head + foreign + entry + foreign + end, head + foreign + foreign + end},
        {"twice", head + entry + foreign + entry + end, head + foreign + end},
        {"without lines", "<xbel>" + oneLine + foreign + "  " + oneLine + " </xbel>",
         "<xbel>" + foreign + "   </xbel>"},
        {"at the end of a line", "<xbel>" + oneLine + "\n</xbel>", "<xbel>\n</xbel>"},
        {"a > in an attribute", head + R"(<bookmark title="a>b" href="file:///gone" x=">"></bookmark>)" + end,
         head + end},
        {"line ends of another system", "<xbel>\r\n  " + oneLine + "\r\n</xbel>\r\n",
         "<xbel>\r\n</xbel>\r\n"},
        {"entities", "<xbel><bookmark href=\"file:///g&#x6f;ne\"/></xbel>", "<xbel></xbel>"},
    };
    for (const Row& row : rows) {
        const auto rest = withoutBookmarks(row.text, isGone);
        ASSERT_TRUE(rest) << row.name;
        EXPECT_EQ(rest->value_or("nothing goes"), row.rest) << row.name;
    }
    for (const std::string& text : {head + foreign + end, std::string(), std::string("\n ")})
        EXPECT_FALSE(withoutBookmarks(text, isGone).value().has_value()) << text;
}

TEST(BookmarkText, DamagedTextIsRefused) {
    const std::string whole = head + foreign + entry + "</xbel>";
    for (std::size_t length = whole.size() - 1; length > whole.find("<xbel"); --length)
        EXPECT_FALSE(withoutBookmarks(whole.substr(0, length), isGone)) << length;
    for (const std::string& text :
         {whole + "<", "<xbel>\xff" + entry + "</xbel>", std::string("rubbish"), "\xef\xbb\xbf" + whole,
          "<a>" + entry + "</b>", "<xbel><bookmark href='file:///gone'>" + entry + "</bookmark></xbel>"})
        EXPECT_FALSE(withoutBookmarks(text, isGone)) << text;
}

} // namespace
} // namespace veilkeep
