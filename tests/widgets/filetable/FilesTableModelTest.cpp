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
