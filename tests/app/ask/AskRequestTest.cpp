#include "app/ask/AskRequest.h"

#include "core/base/UniqueFd.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <string>
#include <vector>

namespace veilkeep {
namespace {

using namespace std::string_literals;
using Fields = std::vector<std::string>;

std::optional<AskRequest> readFrom(const std::string& kind, const std::string& bytes, bool isOpen = false) {
    int ends[2];
    EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    const UniqueFd reader(ends[0]);
    UniqueFd writer(ends[1]);
    ::fcntl(writer.get(), F_SETPIPE_SZ, 1 << 20);
    EXPECT_EQ(::write(writer.get(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    if (!isOpen)
        writer.reset();
    return AskRequest::read(kind, reader.get(), std::chrono::milliseconds(isOpen ? 50 : 10'000));
}

TEST(AskRequest, TakesWhatTheWorkerSendsAndNothingElse) {
    struct Row {
        std::string kind, bytes;
        std::optional<Fields> fields;
    };
    const std::string tooLong(AskRequest::maximumSize, 'x');
    const Row rows[] = {
        {"overwrite", "/a/b\0b 2\0001\0002\0\0"s, Fields{"/a/b", "b 2", "1", "2"}},
        {"overwrite", "/a/\xff\n\0n\0001\0002\0\0rest"s, Fields{"/a/\xff\n", "n", "1", "2"}},
        {"recents", "\0"s, Fields{}},
        {"recents-applications", "/a\0VLC\0LibreOffice\0\0"s, Fields{"/a", "VLC", "LibreOffice"}},
        {"error", "title\0text\0\0"s, Fields{"title", "text"}},
        {"overwrite", "/a/b\0b 2\0001\0\0"s, {}},
        {"overwrite", "/a/b\0b 2\0001\0002\0003\0\0"s, {}},
        {"overwrite", "/a/b\0b 2\0001\0002\0"s, {}},
        {"overwrite", "", {}},
        {"recents", "x\0\0"s, {}},
        {"recents-applications", "/a\0\0"s, {}},
        {"error", tooLong + "\0text\0\0"s, {}},
        {"other", "\0"s, {}},
        {"", "\0"s, {}},
    };
    for (const Row& row : rows) {
        const auto request = readFrom(row.kind, row.bytes);
        EXPECT_EQ(request ? std::optional(request->fields) : std::nullopt, row.fields)
            << row.kind << row.bytes.substr(0, 50);
    }
    EXPECT_TRUE(readFrom("recents", "\0"s, true)) << "the input stays open";
    EXPECT_FALSE(readFrom("error", "title\0"s, true)) << "the rest does not come in time";
}

} // namespace
} // namespace veilkeep
