#include "worker/TraceLook.h"

#include "core/base/FileUri.h"
#include "core/names/TraceNames.h"
#include "tests/support/HostileNames.h"
#include "tests/support/Repeated.h"
#include "tests/support/ScratchTree.h"

#include <glib.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <cctype>
#include <cstdlib>

namespace veilkeep::test {
namespace {

class TraceLook : public ::testing::Test {
protected:
    void makeList(const std::string& uri, const std::string& before = {}) {
        char* const escaped = g_markup_escape_text(uri.c_str(), -1);
        // A new file each time: some file systems sync one that is cut and written anew.
        ::unlink(m_tree.path("home/.local/share/recently-used.xbel").c_str());
        m_tree.makeFile("home/.local/share/recently-used.xbel",
                        before + "<bookmark href=\"" + escaped + "\">");
        g_free(escaped);
    }
    void makeDocument(const std::string& url) {
        m_tree.makeFile("home/.local/share/RecentDocuments/x.desktop",
                        "[Desktop Entry]\nURL[$e]=" + url + "\n");
    }

    ScratchTree m_tree;
};

std::string lowerCaseEscapes(std::string uri) {
    for (std::size_t at = uri.find('%'); at != std::string::npos; at = uri.find('%', at + 1))
        for (const std::size_t digit : {at + 1, at + 2})
            uri[digit] = static_cast<char>(std::tolower(uri[digit]));
    return uri;
}

// Whatever it overlooks would stay.
TEST_F(TraceLook, OverlooksNoName) {
    for (const std::string& name : hostileNames()) {
        const std::string path = "/d/" + name, escapes = lowerCaseEscapes(fileUri(path, UriSpelling::GLib));
        for (const std::string& uri : {fileUri(path, UriSpelling::GLib), fileUri(path, UriSpelling::Qt),
                                       escapes, fileUri(path + "/x", UriSpelling::Qt)}) {
            makeList(uri);
            EXPECT_TRUE(mayHaveTraces(path, false)) << uri;
        }
    }
}

TEST_F(TraceLook, FindsANameAcrossPiecesOfTheFile) {
    for (std::size_t before = 65'400; before < 65'600; before += 3) {
        makeList("file:///d/a%20name%C3%A4", repeated("\n", before));
        EXPECT_TRUE(mayHaveTraces("/d/a name\xc3\xa4", false)) << before;
        EXPECT_FALSE(mayHaveTraces("/d/a namee", false)) << before;
    }
}

TEST_F(TraceLook, ReadsRecentDocuments) {
    makeDocument("file:$HOME/d/report 1.pdf");
    EXPECT_TRUE(mayHaveTraces("/d/report 1.pdf", false));
    EXPECT_FALSE(mayHaveTraces("/d/report 2.pdf", false));
    makeDocument("file:///$$x/a");
    EXPECT_TRUE(mayHaveTraces("/$x", true));
}

TEST_F(TraceLook, LooksForThumbnailsAndActivities) {
    const std::string item = m_tree.makeFile("d/a.png"), other = m_tree.makeFile("d/b.png");
    EXPECT_FALSE(mayHaveTraces(item, false));
    EXPECT_FALSE(mayHaveTraces(m_tree.path("d"), true));
    m_tree.makeFile("home/.cache/thumbnails/fail/x/" + *thumbnailNamesOf(item).begin());
    EXPECT_TRUE(mayHaveTraces(item, false));
    EXPECT_FALSE(mayHaveTraces(other, false));
    EXPECT_TRUE(mayHaveTraces(m_tree.path("d"), true));

    m_tree.makeFile("home/.local/share/kactivitymanagerd/resources/database");
    m_tree.makeFile("home/.local/share/kactivitymanagerd/resources/database-wal", "\1/d/b.png\2");
    EXPECT_FALSE(mayHaveTraces(other, false)) << "without a bus there is nobody to ask";
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere", 1);
    EXPECT_TRUE(mayHaveTraces(other, false));
    EXPECT_FALSE(mayHaveTraces(m_tree.path("d/c.png"), false));
}

} // namespace
} // namespace veilkeep::test
