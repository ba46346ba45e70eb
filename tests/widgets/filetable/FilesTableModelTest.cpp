#include "tests/support/Rounds.h"
#include "tests/widgets/filetable/TableWorld.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>

#include <algorithm>
#include <random>

namespace veilkeep {
namespace {

using namespace veilkeep::test;
using Reporting = QAbstractItemModelTester::FailureReportingMode;

std::vector<ListedFile> filesOf(const std::string& letters) {
    static std::map<char, ListedFile> all;
    std::vector<ListedFile> files;
    for (const char letter : letters) {
        ListedFile& file = all[letter];
        if (!file)
            file = std::make_shared<File>(listedOnly(std::string(1, letter)));
        files.push_back(file);
    }
    return files;
}

TEST(RowChanges, AreRunsOfRows) {
    using Runs = std::vector<RowRun>;
    const struct {
        const char *before, *after, *list;
        std::optional<std::pair<Runs, Runs>> changes; // removed, inserted
    } rows[] = {
        {"", "", "", {{{}, {}}}},
        {"ab", "ab", "ab", {{{}, {}}}},
        {"ab", "abcd", "abcd", {{{}, {{2, 2}}}}},
        {"abcd", "ad", "abcd", {{{{1, 2}}, {}}}},
        {"abcd", "ad", "ad", {{{{1, 2}}, {}}}}, // out of the list
        {"ac", "bd", "abcd", {{{{0, 2}}, {{0, 2}}}}},
        {"abd", "acde", "abcde", {{{{1, 1}}, {{1, 1}, {3, 1}}}}},
        {"abc", "cba", "cba", {}},
        {"abc", "xy", "xy", {}},           // all is new
        {"abcdefg", "bdf", "abcdefg", {}}, // four runs
    };
    for (const auto& row : rows) {
        const auto changes = rowChanges(filesOf(row.before), filesOf(row.after), filesOf(row.list), 3);
        ASSERT_EQ(changes.has_value(), row.changes.has_value()) << row.before << " to " << row.after;
        if (!changes)
            continue;
        EXPECT_EQ(changes->removed, row.changes->first) << row.before << " to " << row.after;
        EXPECT_EQ(changes->inserted, row.changes->second) << row.before << " to " << row.after;
    }
}

class RandomChanges {
public:
    RandomChanges(TableWorld& world, std::mt19937& random) : m_world(world), m_random(random) {}

    void one() {
        FileList& files = m_world.list.files();
        switch (below(8)) {
        case 0:
            return files.append(newFiles(below(9)));
        case 1: {
            std::vector<ListedFile> leaving;
            for (const ListedFile& file : files.all())
                if (below(4) == 0)
                    leaving.push_back(file);
            return files.remove(leaving);
        }
        case 2:
            if (files.size() > 0)
                files.change(files.all()[below(files.size())],
                             [&](File& file) { file.setState(static_cast<int>(below(3)) - 1); });
            return;
        case 3:
            return m_world.list.sortFiles(SortKey::Name, below(2) == 0);
        case 4:
            return m_world.list.filterController().setSearchText(below(2) == 0 ? "" : "1");
        case 5:
            return below(2) == 0 ? m_world.list.filterController().setShowAll(true)
                                 : m_world.list.filterController().setShowOnlyHidden(true);
        case 6:
            return m_world.shown.setSelectedObjects(someShown());
        default:
            if (below(20) == 0)
                files.assign(newFiles(below(300)));
            return;
        }
    }

    std::size_t below(std::size_t limit) { return limit == 0 ? 0 : m_random() % limit; }

private:
    std::vector<File> newFiles(std::size_t count) {
        std::vector<File> files;
        for (; count > 0; --count)
            files.push_back(listedOnly(std::to_string(m_next++), static_cast<int>(below(3)) - 1));
        return files;
    }
    std::vector<ListedFile> someShown() {
        std::vector<ListedFile> some;
        for (const ListedFile& file : m_world.shown.arrangedObjects())
            if (below(3) == 0)
                some.push_back(file);
        return some;
    }

    TableWorld& m_world;
    std::mt19937& m_random;
    int m_next = 0;
};

std::vector<ListedFile> selectedIn(const FilesTableView& view, const FilesTableModel& model) {
    std::vector<int> rows;
    for (const QModelIndex& index : view.selectionModel()->selectedIndexes())
        rows.push_back(index.row());
    std::ranges::sort(rows);
    std::vector<ListedFile> files;
    for (const int row : rows)
        files.push_back(model.fileAt(row));
    return files;
}

// The rows, and the selection both ways, after whatever came together in one turn.
TEST(FilesTableModel, FollowsTheListThroughRandomChanges) {
    constexpr unsigned int seed = 20261121;
    std::mt19937 random(seed);
    TableWorld world;
    FilesTableView view(world.list, world.actions, world.previews);
    FilesTableModel& model = view.filesModel();
    const QAbstractItemModelTester tester(&model, Reporting::Fatal);
    RandomChanges changes(world, random);
    for (int round = 0; round < 400; ++round) {
        for (std::size_t count = changes.below(4); count > 0; --count)
            changes.one();
        model.update();
        ASSERT_EQ(model.files(), world.shown.arrangedObjects()) << "round " << round;
        ASSERT_EQ(selectedIn(view, model), world.shown.selectedObjects()) << "round " << round;
        if (model.rowCount() > 0 && changes.below(2) == 0) {
            const QModelIndex row = model.index(static_cast<int>(changes.below(model.files().size())), 0);
            view.selectionModel()->select(row, QItemSelectionModel::Toggle | QItemSelectionModel::Rows);
            ASSERT_EQ(selectedIn(view, model), world.shown.selectedObjects()) << "round " << round;
        }
    }
}

} // namespace
} // namespace veilkeep
