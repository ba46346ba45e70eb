#include "widgets/controls/DragMime.h"
#include "tests/support/HostileNames.h"

#include <gtest/gtest.h>

#include <QString>

#include <cstdint>

namespace veilkeep::test {
namespace {

using Paths = std::vector<std::string>;
using Rows = std::vector<std::size_t>;

constexpr const char* filesType = "filesPBoardType";
constexpr const char* rowsType = "groupMovePBoardType";
constexpr const char* uriListType = "text/uri-list";

TEST(DragMimeTest, KeepsEveryByte) {
    Paths paths;
    for (const std::string& name : hostileNames())
        paths.push_back("/a folder/" + name);
    QMimeData data;
    dragMime::setPaths(data, paths);
    dragMime::setFileNames(data, paths);
    dragMime::setRows(data, {0, 7, 2'000'000'000});
    EXPECT_EQ(dragMime::paths(data), paths);
    EXPECT_EQ(dragMime::fileNames(data), paths);
    EXPECT_EQ(dragMime::rows(data), (Rows{0, 7, 2'000'000'000}));
    EXPECT_FALSE(dragMime::paths(QMimeData()));
    EXPECT_FALSE(dragMime::rows(QMimeData()));
    EXPECT_FALSE(dragMime::fileNames(QMimeData()));
}

// Cut at each byte, with a byte more, and with each byte another: nothing, or a list of sane entries.
TEST(DragMimeTest, TakesNothingFromDamagedData) {
    QMimeData whole;
    dragMime::setPaths(whole, {"/a", "/bc"});
    dragMime::setRows(whole, {1, 2});
    for (const char* type : {filesType, rowsType}) {
        const QByteArray good = whole.data(type);
        const auto isRead = [&](const QByteArray& bytes) {
            QMimeData data;
            data.setData(type, bytes);
            return dragMime::paths(data) || dragMime::rows(data);
        };
        EXPECT_TRUE(isRead(good));
        EXPECT_FALSE(isRead(good + '\0')) << type;
        for (qsizetype size = 0; size < good.size(); ++size)
            EXPECT_FALSE(isRead(good.left(size))) << type << " cut at " << size;
        for (qsizetype place = 0; place < 8; ++place) { // mark and count
            QByteArray changed = good;
            changed[place] = static_cast<char>(changed[place] ^ 0x55);
            EXPECT_FALSE(isRead(changed)) << type << " changed at " << place;
        }
    }
}

TEST(DragMimeTest, BelievesNoNumber) {
    const QByteArray pathsMark = "VkP1", rowsMark = "VkR1";
    const auto number = [](std::uint64_t value, int bytes) {
        QByteArray text;
        for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
            text += static_cast<char>(value >> shift);
        return text;
    };
    const struct {
        const char* what;
        const char* type;
        QByteArray bytes;
    } cases[] = {
        {"no entry", filesType, pathsMark + number(0, 4)},
        {"four milliards of paths", filesType, pathsMark + number(0xffffffff, 4) + number(1, 4) + "a"},
        {"a path longer than all", filesType, pathsMark + number(1, 4) + number(0xffffffff, 4) + "a"},
        {"an empty path", filesType, pathsMark + number(2, 4) + number(0, 4) + number(2, 4) + "/a"},
        {"a NUL in a path", filesType, pathsMark + number(1, 4) + number(3, 4) + QByteArray("a\0b", 3)},
        {"rows under paths' mark", rowsType, pathsMark + number(1, 4) + number(1, 8)},
        {"four milliards of rows", rowsType, rowsMark + number(0xffffffff, 4) + number(1, 8)},
        {"a row that no list has", rowsType, rowsMark + number(1, 4) + number(std::uint64_t(1) << 31, 8)},
        {"a row below zero", rowsType, rowsMark + number(1, 4) + number(~std::uint64_t(0), 8)},
    };
    for (const auto& each : cases) {
        QMimeData data;
        data.setData(each.type, each.bytes);
        EXPECT_FALSE(dragMime::paths(data)) << each.what;
        EXPECT_FALSE(dragMime::rows(data)) << each.what;
    }
}

// The bytes as another program sends them; QMimeData itself would put them in order.
class ForeignData : public QMimeData {
public:
    explicit ForeignData(QByteArray uris) : m_uris(std::move(uris)) {}
    QStringList formats() const override { return {uriListType}; }

protected:
    QVariant retrieveData(const QString& type, QMetaType) const override {
        return type == QLatin1String(uriListType) ? QVariant(m_uris) : QVariant();
    }

private:
    QByteArray m_uris;
};

TEST(DragMimeTest, ReadsOthersUriLists) {
    const std::pair<const char*, std::optional<Paths>> cases[] = {
        {"file:///a\r\nfile:///b%20c\r\n", Paths{"/a", "/b c"}},
        {"# comment\nfile:///a\n\n\nfile://localhost/b", Paths{"/a", "/b"}},
        {"FILE:/a%FF%fe\r\n", Paths{"/a\xff\xfe"}},
        {"https://example.org/a\r\nfile:///a\r\nmailto:me\r\n", Paths{"/a"}},
        {"https://example.org/a\r\n", std::nullopt},
        {"file://other.host/a\r\n", std::nullopt},
        {"file:///a%00b\r\n", std::nullopt},
        {"/etc/passwd\r\n", std::nullopt},
        {"file:relative\r\n", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [uris, paths] : cases)
        EXPECT_EQ(dragMime::fileNames(ForeignData(uris)), paths) << uris;
    EXPECT_FALSE(dragMime::fileNames(ForeignData(QByteArray(65 * 1024 * 1024, 'a').prepend("file:///a\n"))));
}

} // namespace
} // namespace veilkeep::test
