#include "core/storage/PropertyList.h"

#include "tests/support/Repeated.h"
#include "tests/support/ZeroMapping.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdint>
#include <limits>

namespace veilkeep {
namespace {

using namespace std::string_literals;
using test::nestedLists;
using test::repeated;

std::string document(std::string_view dictionaryContent) {
    return "<plist version=\"1.0\"><dict>" + std::string(dictionaryContent) + "</dict></plist>";
}

std::string documentOf(std::string_view value) {
    return document("<key>k</key>" + std::string(value));
}

std::string nestedDocument(std::string_view begin, std::string_view end, std::size_t depth) {
    return documentOf(repeated(begin, depth) + repeated(end, depth));
}

template <class T>
std::optional<ErrorCode> errorCodeOf(const Result<T>& result) {
    return result ? std::nullopt : std::optional(result.error().code);
}

TEST(PropertyList, IsWrittenAsPlainXml) {
    const Result<std::string> xml = writePropertyList({{"a<", "b & c"},
                                                       {"n", Null()},
                                                       {"l", ValueList{true, std::int64_t{-1}, Null(), 0.5}},
                                                       {"d", Bytes{"AB"}}});
    ASSERT_TRUE(xml);
    EXPECT_EQ(*xml, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                    "<plist version=\"1.0\">\n"
                    "<dict>\n"
                    "\t<key>a&lt;</key>\n"
                    "\t<string>b &amp; c</string>\n"
                    "\t<key>l</key>\n"
                    "\t<array>\n"
                    "\t\t<true/>\n"
                    "\t\t<integer>-1</integer>\n"
                    "\t\t<real>0.5</real>\n"
                    "\t</array>\n"
                    "\t<key>d</key>\n"
                    "\t<data>QUI=</data>\n"
                    "</dict>\n"
                    "</plist>\n");
}

TEST(PropertyList, KeepsEveryKindOfValue) {
    const Value values[] = {"",
                            " leading and trailing \n",
                            "]]>",
                            "<&>\"'",
                            "&amp;",
                            "Grüße 🙂",
                            "\x7F",
                            "\xEF\xBF\xBD",
                            Bytes{},
                            Bytes{"a"},
                            Bytes{"ab"},
                            Bytes{"abc"},
                            Bytes{"\xFF\xFE\0"s},
                            Bytes{std::string(1000, '\xA5')},
                            true,
                            false,
                            std::numeric_limits<std::int64_t>::min(),
                            std::numeric_limits<std::int64_t>::max(),
                            std::uint64_t{1} << 63,
                            ~std::uint64_t{0},
                            0.1,
                            -0.0,
                            5e-324,
                            std::numeric_limits<double>::infinity(),
                            ValueList{},
                            ValueList{"a", ValueList{}, PropertyDictionary{}},
                            PropertyDictionary{{"", ""}, {" k ", 1.5}},
                            PropertyDictionary{{"CF$UID", std::int64_t{5}}},
                            nestedLists(maximumValueNesting)};
    for (const Value& value : values) {
        const Result<std::string> xml = writePropertyList({{"before", true}, {"k", value}, {"after", "x"}});
        ASSERT_TRUE(xml);
        SCOPED_TRACE(*xml);
        const Result<PropertyDictionary> read = parsePropertyList(*xml);
        ASSERT_TRUE(read);
        ASSERT_TRUE(read->find("k"));
        EXPECT_TRUE(*read->find("k") == value);
        EXPECT_EQ(*writePropertyList(*read), *xml);
    }
    const PropertyDictionary onlyUid = {{"CF$UID", std::int64_t{5}}};
    EXPECT_TRUE(parsePropertyList(*writePropertyList(onlyUid)).value() == onlyUid);
}

TEST(PropertyList, CarriesTextThatXmlCannotAsData) {
    for (const std::string& text :
         {"\x01"s, "a\0b"s, "\x1B[31m"s, "a\rb"s, "\r\n"s, "\xFF\xFE"s, "\xED\xA0\xBD"s, "\xC3"s,
          "\xEF\xBF\xBE"s, "\xEF\xBF\xBF"s, "\xC0\xAF"s, "\xF4\x90\x80\x80"s}) {
        const Result<std::string> xml = writePropertyList({{"k", text}});
        ASSERT_TRUE(xml);
        SCOPED_TRACE(*xml);
        EXPECT_TRUE(parsePropertyList(*xml).value() == (PropertyDictionary{{"k", Bytes{text}}}));
    }
}

TEST(PropertyList, ReadsWhatOthersWrite) {
    const struct {
        const char* name;
        std::string xml;
        PropertyDictionary expected;
    } rows[] = {
        {"prologue of other systems",
         "\xEF\xBB\xBF<?xml version=\"1.0\"?>\r\n<!DOCTYPE plist PUBLIC \"-//X//DTD 1.0//EN\" "
         "\"http://x/y.dtd\">\n"
         "<!-- <dict> --><plist version='1.0'>\n<dict/>\n</plist>\n<!-- end -->",
         {}},
        {"entities",
         documentOf("<string>&lt;&amp;&gt;&quot;&apos;&#65;&#x1F642;</string>"),
         {{"k", "<&>\"'A🙂"}}},
        {"entity of an entity", documentOf("<string>&amp;lt;</string>"), {{"k", "&lt;"}}},
        {"comment in text", documentOf("<string>a<!-- </string> -->b</string>"), {{"k", "ab"}}},
        {"section", documentOf("<string>a<![CDATA[<b>&amp;]]>c</string>"), {{"k", "a<b>&amp;c"}}},
        {"line ends", documentOf("<string>a\r\nb\rc</string>"), {{"k", "a\nb\nc"}}},
        {"carriage return", documentOf("<string>a&#13;</string>"), {{"k", Bytes{"a\r"}}}},
        {"date", documentOf("<date>1601-01-01T00:00:00Z</date>"), {{"k", "1601-01-01T00:00:00Z"}}},
        {"data in lines", documentOf("<data>\n\tQUJ\n\tD RA==\n</data>"), {{"k", Bytes{"ABCD"}}}},
        {"data with comment", documentOf("<data>QUJD<!-- -->RA==</data>"), {{"k", Bytes{"ABCD"}}}},
        {"blanks around numbers", documentOf("<integer> 010 </integer>"), {{"k", std::int64_t{10}}}},
        {"booleans in two tags", documentOf("<true></true>"), {{"k", true}}},
        {"empty tags",
         document("<key/><string/><key>d</key><data /><key>l</key><array/>"),
         {{"", ""}, {"d", Bytes{}}, {"l", ValueList{}}}},
        {"blank in end tag",
         documentOf("<array ><dict\n></dict ></array\t>"),
         {{"k", ValueList{PropertyDictionary{}}}}},
        {"key twice",
         document("<key>a</key><true/><key>b</key><true/><key>a</key><false/>"),
         {{"a", false}, {"b", true}}},
        {"real with exponent", documentOf("<real>-1.5E3</real>"), {{"k", -1500.0}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Result<PropertyDictionary> read = parsePropertyList(row.xml);
        ASSERT_TRUE(read);
        EXPECT_TRUE(*read == row.expected) << *writePropertyList(*read);
    }
}

TEST(PropertyList, RefusesWhatIsNotOneAndPrintsNothing) {
    const struct {
        const char* name;
        std::string xml;
    } rows[] = {
        {"nothing", ""},
        {"blanks", " \n"},
        {"zeros", std::string(65'536, '\0')},
        {"binary list", "bplist00\xD0\x08\x00\x00\x00\x00\x00\x00\x01\x01"s},
        {"brace list", "{ k = v; }"},
        {"JSON", "{\"k\": \"v\"}"},
        {"UTF-16", "\xFF\xFE<\0p\0"s},
        {"Latin-1", documentOf("<string>\xE9</string>")},
        {"control byte", documentOf("<string>\x01</string>")},
        {"NUL", documentOf("<string>\0</string>"s)},
        {"no plist", "<dict></dict>"},
        {"empty plist", "<plist/>"},
        {"plist without root", "<plist></plist>"},
        {"root a list", "<plist><array/></plist>"},
        {"two roots", "<plist><dict/><dict/></plist>"},
        {"two lists", document("") + document("")},
        {"text behind", document("") + "x"},
        {"text between", document("x")},
        {"unknown element", documentOf("<set/>")},
        {"attribute", documentOf("<string a=\"b\"></string>")},
        {"wrong end", documentOf("<array></dict>")},
        {"wrong end of text", documentOf("<string></key>")},
        {"end alone", document("</array>")},
        {"element in text", documentOf("<string><true/></string>")},
        {"value without key", document("<true/>")},
        {"key without value", document("<key>k</key>")},
        {"key after key", document("<key>k</key><key>l</key>")},
        {"key in a list", documentOf("<array><key>k</key></array>")},
        {"key with carriage return", document("<key>&#13;</key><true/>")},
        {"unknown entity", documentOf("<string>&ampx;</string>")},
        {"open entity", documentOf("<string>a&</string>")},
        {"empty entity", documentOf("<string>&;</string>")},
        {"entity NUL", documentOf("<string>&#0;</string>")},
        {"entity surrogate", documentOf("<string>&#xD83D;</string>")},
        {"entity beyond Unicode", documentOf("<string>&#x110000;</string>")},
        {"entity of many digits", documentOf("<string>&#" + std::string(100, '9') + ";</string>")},
        {"entities defined",
         "<!DOCTYPE plist [<!ENTITY a \"<array>\">]>" + documentOf("<string>&a;</string>")},
        {"comment without end", documentOf("<string>a<!-- </string>")},
        {"section without end", documentOf("<string><![CDATA[</string>")},
        {"section between", documentOf("<![CDATA[<true/>]]>")},
        {"no integer", documentOf("<integer>abc</integer>")},
        {"integer and more", documentOf("<integer>1 2</integer>")},
        {"integer too great", documentOf("<integer>18446744073709551616</integer>")},
        {"integer too small", documentOf("<integer>-9223372036854775809</integer>")},
        {"empty integer", documentOf("<integer/>")},
        {"no real", documentOf("<real>1,5</real>")},
        {"no boolean", documentOf("<true>x</true>")},
        {"no base64", documentOf("<data>QU*=</data>")},
        {"cut base64", documentOf("<data>QUI</data>")},
        {"base64 after its end", documentOf("<data>QQ==QQ==</data>")},
        {"deep by one", nestedDocument("<array>", "</array>", maximumValueNesting + 1)},
        {"arrays", nestedDocument("<array>", "</array>", 60'000)},
        {"arrays without end", nestedDocument("<array>", "", 100'000)},
        {"dictionaries", nestedDocument("<dict><key/>", "</dict>", 50'000)},
        {"arrays whose ends are comments", nestedDocument("<array><!--</array>-->", "", 40'000)},
        {"property lists in each other", nestedDocument("<plist>", "</plist>", 60'000)},
    };
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    for (const auto& row : rows)
        EXPECT_EQ(errorCodeOf(parsePropertyList(row.xml)), ErrorCode::Damaged) << row.name;
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(PropertyList, IsNotTakenForWholeWhenCut) {
    const std::string whole = *writePropertyList({{"a", "text"},
                                                  {"b", ValueList{Bytes{"x"}, 1.5, true}},
                                                  {"c", PropertyDictionary{{"d", std::int64_t{1}}}}});
    for (std::size_t size = 0; size + 1 < whole.size(); ++size) // the last byte is a line feed
        EXPECT_FALSE(parsePropertyList(whole.substr(0, size))) << "cut at " << size;
}

TEST(PropertyList, HasAGreatestSize) {
    const std::string fits = document(std::string(maximumPropertyListSize - document("").size(), ' '));
    EXPECT_TRUE(parsePropertyList(fits));
    EXPECT_EQ(errorCodeOf(parsePropertyList(fits + " ")), ErrorCode::TooLarge);
    EXPECT_EQ(errorCodeOf(parsePropertyList(test::ZeroMapping(std::size_t{1} << 30).view())),
              ErrorCode::TooLarge);
    const std::string large(maximumPropertyListSize, 'x');
    EXPECT_EQ(errorCodeOf(writePropertyList({{"k", large}})), ErrorCode::TooLarge);
}

TEST(PropertyList, DoesNotWriteWhatItWouldNotRead) {
    const Value deepest = nestedLists(maximumValueNesting + 1);
    const PropertyDictionary refused[] = {
        {{"k\r", true}}, {{"\x01", true}}, {{"\xFF", true}}, {{"k", deepest}}};
    for (const PropertyDictionary& dictionary : refused)
        EXPECT_EQ(errorCodeOf(writePropertyList(dictionary)), ErrorCode::InvalidArgument);
}

TEST(PropertyList, RealsDoNotDependOnTheLocale) {
    const char* const withComma[] = {"de_DE.UTF-8", "fr_FR.UTF-8", "ru_RU.UTF-8", "nl_NL.UTF-8",
                                     "de_DE.utf8"};
    bool found = false;
    for (const char* name : withComma)
        found = found || std::setlocale(LC_ALL, name);
    if (!found)
        GTEST_SKIP() << "no locale with a decimal comma is installed";
    const std::string xml = writePropertyList({{"k", 1.5}}).value();
    const Result<PropertyDictionary> read = parsePropertyList(xml);
    std::setlocale(LC_ALL, "C");
    EXPECT_NE(xml.find("<real>1.5</real>"), std::string::npos) << xml;
    EXPECT_TRUE(read.value() == (PropertyDictionary{{"k", 1.5}}));
}

} // namespace
} // namespace veilkeep
