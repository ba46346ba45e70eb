#include "filelist/FileList.h"

#include "tests/filelist/StoreWorld.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <ranges>

namespace veilkeep {
namespace {

using test::fileOf;

// Look-ups and counts against plain scans.
void expectConsistent(const FileList& list, std::span<const std::string> texts) {
    const auto first = [&](auto text, const std::string& wanted) {
        const auto found =
            std::ranges::find_if(list.all(), [&](const ListedFile& file) { return text(*file) == wanted; });
        return found == list.all().end() ? nullptr : *found;
    };
    for (const std::string& text : texts) {
        ASSERT_EQ(list.withPath(text), first([](const File& file) { return file.path(); }, text));
        ASSERT_EQ(list.withOriginalPath(text),
                  first([](const File& file) { return file.originalPath(); }, text));
    }
    for (std::int64_t group = 1; group < 5; ++group)
        ASSERT_EQ(
            static_cast<std::ptrdiff_t>(list.countOfGroup(group)),
            std::ranges::count_if(list.all(), [&](const auto& file) { return file->groupID() == group; }));
    ASSERT_EQ(list.countOfGroup(0), list.all().size());
}

TEST(FileListTest, AnswersAsScansInListOrderWould) {
    const std::vector<std::string> texts = {"", "/a", "/A", "/a/", "/a\xFF", std::string("/a\0b", 4), "/b"};
    std::mt19937 random(1);
    const auto pick = [&](std::size_t count) { return random() % count; };
    FileList list;
    std::vector<ListedFile> model, gone;
    for (int step = 0; step < 3000; ++step) {
        const std::size_t kind = pick(20);
        if (kind < 8 || model.empty()) {
            model.push_back(list.append(
                fileOf(texts[pick(texts.size())], texts[pick(texts.size())], static_cast<int>(pick(5)))));
        } else if (kind < 17) {
            const bool hasLeft = !gone.empty() && pick(8) == 0;
            const ListedFile file = hasLeft ? gone[pick(gone.size())] : model[pick(model.size())];
            list.change(file, [&](File& changed) {
                changed.setPath(texts[pick(texts.size())]);
                list.change(file, [&](File& again) { again.setGroupID(static_cast<int>(pick(5))); });
                changed.setOriginalPath(texts[pick(texts.size())]);
                if (pick(10) == 0 && !hasLeft) { // taken out while it is being changed
                    list.remove(std::vector{file});
                    std::erase(model, file);
                    gone.push_back(file);
                }
            });
        } else {
            std::vector<ListedFile> leaving = gone; // passed over
            for (const ListedFile& file : model)
                if (pick(4) == 0)
                    leaving.push_back(file);
            list.remove(leaving);
            for (const ListedFile& file : leaving)
                if (std::erase(model, file) > 0)
                    gone.push_back(file);
        }
        ASSERT_EQ(list.all(), model);
        ASSERT_NO_FATAL_FAILURE(expectConsistent(list, texts)) << "step " << step;
        ASSERT_TRUE(std::ranges::none_of(gone, [&](const auto& file) { return list.contains(file); }));
    }
}

} // namespace
} // namespace veilkeep
