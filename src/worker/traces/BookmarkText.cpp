#include "worker/traces/BookmarkText.h"

#include <glib.h>

#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace veilkeep {
namespace {

constexpr std::string_view bookmarkTag = "<bookmark", bookmarkName = "bookmark";

// Where the bookmarks of a text begin and end. The parser tells no offsets, so it gets the text in pieces,
// each ending with a ">": a tag that it tells of ends with the piece.
class BookmarkScan {
public:
    struct Bookmark {
        std::string uri;
        std::size_t begin = 0, end = 0;
    };

    explicit BookmarkScan(const std::string& text) : m_text(text) {}

    Result<std::vector<Bookmark>> bookmarks() {
        constexpr GMarkupParser calls = {begun, ended, nullptr, nullptr, nullptr};
        const std::unique_ptr<GMarkupParseContext, decltype(&g_markup_parse_context_unref)> context(
            g_markup_parse_context_new(&calls, GMarkupParseFlags{}, this, nullptr),
            g_markup_parse_context_unref);
        while (m_end < m_text.size()) {
            const std::size_t begin = m_end;
            m_end = std::min(m_text.find('>', begin), m_text.size() - 1) + 1;
            if (!g_markup_parse_context_parse(context.get(), m_text.data() + begin,
                                              static_cast<gssize>(m_end - begin), nullptr))
                return Error::damaged("parse");
        }
        if (!g_markup_parse_context_end_parse(context.get(), nullptr) || m_isLost)
            return Error::damaged("parse");
        return std::move(m_bookmarks);
    }

private:
    static void begun(GMarkupParseContext*, const char* element, const char** names, const char** values,
                      void* scan, GError**) {
        if (element == bookmarkName)
            static_cast<BookmarkScan*>(scan)->begin(names, values);
    }
    static void ended(GMarkupParseContext*, const char* element, void* scan, GError**) {
        if (element == bookmarkName)
            static_cast<BookmarkScan*>(scan)->m_bookmarks.back().end =
                static_cast<BookmarkScan*>(scan)->m_end;
    }

    void begin(const char** names, const char** values) {
        Bookmark bookmark;
        for (; *names; ++names, ++values)
            if (std::string_view(*names) == "href")
                bookmark.uri = *values;
        bookmark.begin = m_text.rfind('<', m_end - 1);
        const bool isNested = !m_bookmarks.empty() && m_bookmarks.back().end == 0;
        if (isNested || m_text.compare(bookmark.begin, bookmarkTag.size(), bookmarkTag) != 0)
            m_isLost = true;
        m_bookmarks.push_back(std::move(bookmark));
    }

    const std::string& m_text;
    std::size_t m_end = 0; // of the piece that is being parsed
    std::vector<Bookmark> m_bookmarks;
    bool m_isLost = false;
};

using Bookmarks = std::vector<BookmarkScan::Bookmark>;

// With a line's indentation and end where the bookmark has its lines to itself.
std::pair<std::size_t, std::size_t> wholeLines(const std::string& text, std::size_t begin, std::size_t end) {
    const std::size_t lineBegin = text.find_last_not_of(" \t", begin - 1) + 1;
    const std::size_t lineEnd = text.find_first_not_of(" \t\r", end);
    if (text[lineBegin - 1] == '\n' && lineEnd != std::string::npos && text[lineEnd] == '\n')
        return {lineBegin, lineEnd + 1};
    return {begin, end};
}

std::string textWithout(const std::string& text, const Bookmarks& gone) {
    std::string kept;
    std::size_t keptUpTo = 0;
    for (const auto& bookmark : gone) {
        const auto [begin, end] = wholeLines(text, bookmark.begin, bookmark.end);
        kept.append(text, keptUpTo, begin - keptUpTo);
        keptUpTo = end;
    }
    return kept.append(text, keptUpTo);
}

bool hasTheseBookmarks(const std::string& text, const std::vector<std::string>& uris) {
    const auto found = BookmarkScan(text).bookmarks();
    return found &&
           std::equal(found->begin(), found->end(), uris.begin(), uris.end(),
                      [](const auto& bookmark, const std::string& uri) { return bookmark.uri == uri; });
}

} // namespace

Result<std::optional<std::string>> withoutBookmarks(const std::string& text,
                                                    const std::function<bool(const std::string& uri)>& goes) {
    if (text.find_first_not_of(" \t\r\n") == std::string::npos)
        return std::optional<std::string>();
    const auto bookmarks = BookmarkScan(text).bookmarks();
    if (!bookmarks)
        return bookmarks.error();
    Bookmarks gone;
    std::vector<std::string> kept;
    for (const auto& bookmark : *bookmarks)
        if (goes(bookmark.uri))
            gone.push_back(bookmark);
        else
            kept.push_back(bookmark.uri);
    if (gone.empty())
        return std::optional<std::string>();
    std::string rest = textWithout(text, gone);
    if (!hasTheseBookmarks(rest, kept))
        return Error::damaged("cut");
    return std::optional(std::move(rest));
}

} // namespace veilkeep
