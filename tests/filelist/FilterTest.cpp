#include "filelist/FilesController.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace veilkeep {
namespace {

File record(const std::string& name, std::int32_t state = File::Visible, std::int64_t groupID = 0) {
    return File({{"Name", Bytes{name}},
                 {"Path", Bytes{"/" + name}},
                 {"OriginalPath", Bytes{"/" + name}},
                 {"State", std::int64_t{state}},
                 {"GroupID", groupID},
                 {"Alias", Bytes{}}});
}

TEST(NamePattern, FindsAnywhereWithWildcardsAndWithoutCase) {
    const struct {
        const char* search;
        std::string name;
        bool isIn;
    } rows[] = {
        {"", "", true},
        {"?", "", false},
        {"tax", "My TAXES.pdf", true},
        {"aab", "aaab", true}, // the first place of "aa" is the wrong one
        {"a*c", "xaybcz", true},
        {"a*a", "a", false}, // each piece takes characters of its own
        {"a?c", "aéc", true},
        {"STRASSE", "straße", false}, // simple folding: one character stays one
        {"k", "\u212A", true},        // the Kelvin sign
        {"ȺB", "ⱥb", true},           // two bytes and three
        {"ÿ", "\xFF", false},         // no text equals nothing that can be typed
        {"a?b",
         "a\xFF"
         "b",
         true},
        {"©", "é", false}, // the second byte of another character
        {"a.c", "abc", false},
        {"b", std::string("a\0b", 3), true},
    };
    for (const auto& row : rows)
        EXPECT_EQ(NamePattern(row.search).isIn(row.name), row.isIn) << row.search << " in " << row.name;
}

TEST(NamePattern, HostilePatternsEnd) {
    QString search;
    for (int times = 0; times < 2000; ++times)
        search += "a*a?";
    EXPECT_FALSE(NamePattern(search + "b")
                     .isIn(std::string(100'000, 'a'))); // would never end if it tried every division
}

class FilesControllerTest : public ::testing::Test {
protected:
    FilesControllerTest() {
        for (const auto& [name, state, group] :
             {std::tuple{"a.txt", 0, 3}, {"b.txt", 1, 3}, {"c.TXT", -1, 0}, {"d.pdf", -2, 0}})
            m_list.append(record(name, state, group));
        QObject::connect(&m_controller, &FilesController::selectionChanged, [&] { ++m_selectionChanges; });
    }

    static std::string namesOf(const std::vector<ListedFile>& files) {
        std::string names;
        for (const ListedFile& file : files)
            names += file->name().front();
        return names;
    }
    std::string shown() const { return namesOf(m_controller.arrangedObjects()); }
    std::string selected() const { return namesOf(m_controller.selectedObjects()); }
    const ListedFile& file(std::size_t row) const { return m_list.all()[row]; }

    FileList m_list;
    FilesController m_controller{m_list};
    int m_selectionChanges = 0;
};

TEST_F(FilesControllerTest, ShowsInListOrderWhatPasses) {
    const std::pair<FilePredicate, const char*> rows[] = {
        {{}, "abcd"},       {{-1, {}, {}}, "c"}, {{{}, 3, {}}, "ab"}, {{{}, {}, "T?t"}, "abc"},
        {{1, 3, "b"}, "b"}, {{0, 3, "b"}, ""},
    };
    for (const auto& [predicate, names] : rows) {
        m_controller.setFilterPredicate(predicate);
        EXPECT_EQ(shown(), names) << predicate.text().toStdString();
    }
}

// Rows that follow each change by itself are those that the whole list would give.
TEST_F(FilesControllerTest, FollowsSingleChangesAsIfArrangedAnew) {
    for (int number = 0; number < 40; ++number) // some of one path
        m_list.append(record("tax " + std::to_string(number / 2), number % 3));
    const FilePredicate predicate{1, {}, "tax"};
    m_controller.setFilterPredicate(predicate);
    const char* const names[] = {"tax", "other", "a tax"};
    std::mt19937 random(7);
    for (int step = 0; step < 500; ++step) {
        (void)m_controller.arrangedObjects();
        const ListedFile changed = file(random() % m_list.size()), other = file(random() % m_list.size());
        const auto number = static_cast<std::int32_t>(random() % 3);
        m_list.change(changed, [&](File& record) {
            record.setPath("/" + std::to_string(random()));
            m_list.change(other, [&](File& within) { within.setState(number); });
            record.setName(names[number]);
            record.setState(number == 0 ? 1 : 0);
        });
        FilesController anew(m_list);
        anew.setFilterPredicate(predicate);
        ASSERT_EQ(m_controller.arrangedObjects(), anew.arrangedObjects()) << "step " << step;
    }
}

TEST_F(FilesControllerTest, AnswersForTheSelectionInListOrder) {
    for (int number = 0; number < 40; ++number)
        m_list.append(record("x"));
    EXPECT_EQ(m_controller.firstSelected(), nullptr);
    m_controller.setSelectedObjects({file(3), file(1)}); // few of the list
    EXPECT_EQ(selected(), "bd");
    EXPECT_EQ(m_controller.firstSelected(), file(1));
}

TEST_F(FilesControllerTest, SelectionLastsWhileItsRecordsAreShown) {
    m_controller.setSelectedObjects({file(2), file(1), file(0), std::make_shared<File>(record("x"))});
    EXPECT_EQ(selected(), "abc");
    m_controller.setSelectedObjects({file(0), file(1), file(2)});
    EXPECT_EQ(m_selectionChanges, 1);
    m_list.append(record("e"));
    m_controller.setFilterPredicate({{}, {}, "txt"});
    EXPECT_EQ(m_selectionChanges, 1);
    EXPECT_EQ(selected(), "abc");

    m_controller.setFilterPredicate({{}, 3, {}});
    EXPECT_EQ(selected(), "ab");
    m_list.change(file(0), [](File& changed) { changed.moveToGroup(0); });
    EXPECT_EQ(selected(), "b");
    m_controller.setFilterPredicate({});
    EXPECT_EQ(selected(), "b"); // what was left out once is not selected again
    const std::vector<ListedFile> last{file(1)};
    m_list.remove(last);
    EXPECT_EQ(selected(), "");
    EXPECT_EQ(m_selectionChanges, 4);
}

} // namespace
} // namespace veilkeep
