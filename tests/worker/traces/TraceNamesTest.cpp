#include "core/names/TraceNames.h"
#include "core/base/FileUri.h"
#include "core/base/Md5.h"
#include "core/base/Utf8.h"
#include "tests/support/HostileNames.h"
#include "tests/support/Repeated.h"
#include "tests/support/ScratchTree.h"

#include <QUrl>
#include <glib.h>
#include <gtest/gtest.h>

#include <unistd.h>

namespace veilkeep::test {
namespace {

std::string taken(char* text) {
    const std::string copy = text ? text : "";
    g_free(text);
    return copy;
}

TEST(FileUri, IsSpelledAsTheLibrariesDo) {
    for (const std::string& name : hostileNames()) {
        const std::string path = "/a;[b]/" + name;
        EXPECT_EQ(fileUri(path, UriSpelling::GLib), taken(g_filename_to_uri(path.c_str(), nullptr, nullptr)));
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
        {"file:///a#f", "/a"},
        {"file:///100%", "/100%"},
        {"file:///%zz%4", "/%zz%4"},
        {"file://elsewhere/a", std::nullopt},
        {"file:a", std::nullopt},
        {"file:///a%00b", std::nullopt},
        {"trash:///a", std::nullopt},
        {"/a", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [uri, path] : rows)
        EXPECT_EQ(pathOfFileUri(uri), path) << uri;
}

TEST(Md5, IsTheDigestThatGLibMakes) {
    for (std::size_t length = 0; length < 200; ++length) {
        const std::string text = repeated("\xfb", length) + "x";
        EXPECT_EQ(md5(text), taken(g_compute_checksum_for_data(
                                 G_CHECKSUM_MD5, reinterpret_cast<const guchar*>(text.data()), text.size())));
    }
}

TEST(TraceNames, SpellsAPathWithItsLinksAndWithout) {
    const ScratchTree tree;
    tree.makeDirectory("real/.SYS_INDEX/rid");
    ASSERT_EQ(::symlink("real/.SYS_INDEX/rid", tree.path("link").c_str()), 0);
    EXPECT_EQ(spellingsOf(tree.path("./link//file")),
              (std::vector<std::string>{tree.path("link/file"), tree.path("real/.SYS_INDEX/rid/file"),
                                        tree.path("real/dir/file")}));
    EXPECT_EQ(spellingsOf("/missing/file"), std::vector<std::string>{"/missing/file"});
}

} // namespace
} // namespace veilkeep::test
