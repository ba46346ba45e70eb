#include "core/base/FileUri.h"

#include "core/base/Utf8.h"
#include "tests/support/HostileNames.h"

#include <QUrl>
#include <glib.h>
#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

std::string uriOfGLib(const std::string& path) {
    char* const uri = g_filename_to_uri(path.c_str(), nullptr, nullptr);
    const std::string copy = uri ? uri : "";
    g_free(uri);
    return copy;
}

TEST(FileUri, IsSpelledAsTheLibrariesDo) {
    for (const std::string& name : hostileNames()) {
        const std::string path = "/a;[b]/" + name;
        EXPECT_EQ(fileUri(path, UriSpelling::GLib), uriOfGLib(path));
        const QUrl url = QUrl::fromLocalFile(QString::fromStdString(path));
        if (isWellFormedUtf8(name) && url.toLocalFile().toStdString() == path) { // Qt folds some characters
            EXPECT_EQ(fileUri(path, UriSpelling::Qt), url.toEncoded(QUrl::FullyEncoded).toStdString());
        }
        for (const UriSpelling spelling : {UriSpelling::GLib, UriSpelling::Qt})
            EXPECT_EQ(pathOfFileUri(fileUri(path, spelling)), path);
    }
}

TEST(FileUri, IsReadHoweverItIsSpelled) {
    const std::pair<std::string, std::optional<std::string>> rows[] = {
        {"file:///a%20b", "/a b"},
        {"FILE:///a%c3%A4", "/a\xc3\xa4"},
        {"file://localhost/a", "/a"},
        {"file:/a b\xff", "/a b\xff"},
        {"file:///a%2fb%3F%23?q#f", "/a/b?#"},
        {"file:///%zz%4", "/%zz%4"},
        {"file://elsewhere/a", std::nullopt},
        {"file:a", std::nullopt},
        {"file:///a%00b", std::nullopt},
        {"/a", std::nullopt},
    };
    for (const auto& [uri, path] : rows)
        EXPECT_EQ(pathOfFileUri(uri), path) << uri;
}

} // namespace
} // namespace veilkeep::test
