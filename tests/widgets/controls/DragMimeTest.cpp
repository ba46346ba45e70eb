#include "widgets/controls/DragMime.h"
#include "tests/support/HostileNames.h"

#include <gtest/gtest.h>

#include <QString>

namespace veilkeep::test {
namespace {

using Paths = std::vector<std::string>;
using Rows = std::vector<std::size_t>;

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
        {"https://example.org/a\r\nfile:///a\r\nmailto:me\r\n", Paths{"/a"}},
        {"https://example.org/a\r\n", std::nullopt},
        {"file://other.host/a\r\n", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [uris, paths] : cases)
        EXPECT_EQ(dragMime::fileNames(ForeignData(uris)), paths) << uris;
    EXPECT_FALSE(dragMime::fileNames(ForeignData(QByteArray(65 * 1024 * 1024, 'a').prepend("file:///a\n"))));
}

} // namespace
} // namespace veilkeep::test
