#include "filelist/FileListActions.h"
#include "core/records/FileSystemHelpers.h"
#include "tests/filelist/StoreWorld.h"

#include <gtest/gtest.h>

#include <QLocale>

#include <algorithm>
#include <cerrno>
#include <map>

namespace veilkeep {
namespace {

using namespace veilkeep::test;
using OpenWithItem = FileListActions::OpenWithItem;

class FakeApplications : public Applications {
public:
    ForItem applicationsFor(const std::string&) override { return forItem; }
    std::vector<InstalledApplication> everyApplication() override { return {}; }
    Result<void> open(const std::string& path) override {
        const auto fault = faults.find(path);
        if (fault != faults.end())
            return Error::system("open", path, fault->second);
        opened.push_back(path);
        return {};
    }
    Result<void> openWith(const QString& identifier, const std::string& path) override {
        const auto done = open(path);
        if (done)
            opened.back() = identifier.toStdString() + " " + path;
        return done;
    }

    ForItem forItem;
    std::map<std::string, int> faults; // errno by path
    std::vector<std::string> opened;
};

InstalledApplication application(const char* name, const char* version = "") {
    return {QString(name) + ".desktop", name, version, {}};
}

class FileListActionsTest : public ::testing::Test {
protected:
    FileListActionsTest() {
        ListWorldOptions options;
        options.fileViewer = &viewer;
        world.emplace(options);
        actions.emplace(*world->list, world->alerts, &applications);
    }

    void list(std::vector<File> files) {
        const std::size_t first = world->list->files().size();
        world->list->files().append(std::move(files));
        const auto& all = world->list->files().all();
        world->list->filesController().setSelectedObjects(
            {all.begin() + static_cast<std::ptrdiff_t>(first), all.end()});
    }
    ListedFile at(std::size_t row) const { return world->list->files().all()[row]; }
    std::string order() const {
        std::string names;
        for (const ListedFile& file : world->list->files().all())
            names += (names.empty() ? "" : " ") + std::string(file->name());
        return names;
    }
    QStringList titles() const {
        QStringList all;
        for (const OpenWithItem& item : actions->openWithMenuItemForFile("/h/a"))
            all << (item.kind == OpenWithItem::Kind::Separator ? "-" : item.title);
        return all;
    }

    const ScratchTree tree;
    FakeApplications applications;
    RevealedPaths viewer;
    std::optional<ListWorld> world;
    std::optional<FileListActions> actions;
};

TEST_F(FileListActionsTest, HiddenItemsAreNeitherOpenedNorShown) {
    list({listedOnly("a"), listedOnly("b", File::Hidden), listedOnly("c", File::Broken)});
    actions->openFileAction();
    actions->menuRevealFileInFinder();
    EXPECT_EQ(applications.opened, (std::vector<std::string>{"/h/a", "/h/c"}));
    EXPECT_EQ(viewer.revealed, applications.opened);

    world->list->filesController().setSelectedObjects({at(1)});
    actions->openFileAction();
    actions->menuRevealFileInFinder();
    actions->openSelectedFileWithApplication("X");
    EXPECT_EQ(applications.opened.size(), 2u);
    EXPECT_EQ(viewer.revealed.size(), 2u);

    world->list->filesController().setSelectedObjects({at(0)});
    actions->openSelectedFileWithApplication("X");
    EXPECT_EQ(applications.opened.back(), "X /h/a");
}

TEST_F(FileListActionsTest, WhatCannotBeOpenedIsToldOnce) {
    applications.faults = {{"/h/a", ENOENT}, {"/h/c", EACCES}};
    list({listedOnly("a"), listedOnly("b"), listedOnly("c")});
    world->presenter.expect({.title = "Some items could not be opened.", .answer = "OK"});
    actions->openFileAction();
    EXPECT_EQ(applications.opened, std::vector<std::string>{"/h/b"});
    EXPECT_EQ(world->presenter.shown().back().errors,
              (std::vector<ErrorEntry>{{"a", "No such file or directory"}, {"c", "Permission denied"}}));

    world->list->filesController().setSelectedObjects({at(2)});
    world->presenter.expect({.title = "“c” could not be opened.", .answer = "OK"});
    actions->openSelectedFileWithApplication("X");
}

TEST_F(FileListActionsTest, OpenWithListsTenApplicationsBehindTheDefaultOne) {
    EXPECT_EQ(titles(), (QStringList{"<None>", "-", "Other…"}));
    applications.forItem.all = {application("Left out without a default one")};
    EXPECT_EQ(titles(), (QStringList{"<None>", "-", "Other…"}));

    applications.forItem = {application("Viewer", "2.1"),
                            {application("Viewer", "2.1"), application("Viewer", "7"), application("%1")}};
    EXPECT_EQ(titles(),
              (QStringList{"Viewer (default)", "-", "Viewer", "Viewer (2.1)", "%1", "-", "Other…"}));

    for (const char* name : {"3", "4", "5", "6", "7", "8", "9", "10", "11"})
        applications.forItem.all.push_back(application(name));
    const QStringList many = titles();
    EXPECT_EQ(many.size(), 2 + 10 + 2);
    EXPECT_EQ(many[11], "9");
}

TEST_F(FileListActionsTest, MenuItemsFollowTheSelection) {
    const struct {
        const char* what;
        std::vector<File> selected;
        bool opens, opensWith;
        int switchValue;
    } rows[] = {
        {"nothing", {}, false, false, 0},
        {"visible", {listedOnly("a")}, true, true, 0},
        {"hidden", {listedOnly("a", File::Hidden)}, false, false, 1},
        {"broken", {listedOnly("a", File::Broken)}, true, true, 2},
        {"folder", {listedOnly("a", File::Visible, 0, false)}, true, false, 0},
        {"application", {listedOnly("a.app")}, true, false, 0},
        {"two visible", {listedOnly("a"), listedOnly("b")}, true, false, 0},
        {"two hidden", {listedOnly("a", File::Hidden), listedOnly("b", File::Hidden)}, false, false, 1},
        {"both", {listedOnly("a", File::Hidden), listedOnly("b")}, true, false, 2},
    };
    for (const auto& row : rows) {
        world->list->files().assign({});
        list(row.selected);
        EXPECT_EQ(actions->validateMenuItem(103, "All Files").isEnabled, row.opens) << row.what;
        EXPECT_EQ(actions->validateMenuItem(105, "All Files").isEnabled, row.opens) << row.what;
        EXPECT_EQ(actions->validateMenuItem(104, "All Files").isEnabled, row.opensWith) << row.what;
        EXPECT_EQ(actions->switchValue(), row.switchValue) << row.what;
        EXPECT_EQ(actions->validateToolbarItem(489).isEnabled, !row.selected.empty()) << row.what;
    }
}

TEST_F(FileListActionsTest, TheSwitchOfTheMenuHidesUnlessAllIsHidden) {
    const std::string first = tree.makeFile("d/first"), second = tree.makeFile("d/second");
    const ListedFile files[] = {world->add(first), world->add(second)};
    world->list->filesController().setSelectedObjects({files[0]});
    actions->menuSwitchOnOff();
    EXPECT_FALSE(exists(first));
    world->list->filesController().setSelectedObjects({files[0], files[1]});
    actions->menuSwitchOnOff(); // of both
    EXPECT_FALSE(exists(first) || exists(second));
    actions->menuSwitchOnOff();
    EXPECT_TRUE(exists(first) && exists(second));
}

TEST_F(FileListActionsTest, SortsTheListItselfAndKeepsTheSelection) {
    using Key = FileListActions::SortKey;
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::French, QLocale::France));
    list({listedOnly("beta", File::Visible, 30), listedOnly("Alpha", File::Hidden, 30),
          listedOnly("émile", File::Broken, unknownFileSize), listedOnly("alpha", File::Visible, 5),
          listedOnly("Zoe", File::Visible, 0), listedOnly("zebra\xFF", File::Visible, unknownFileSize)});
    auto& controller = world->list->filesController();
    controller.setSelectedObjects({at(0), at(3)});
    const struct {
        Key key;
        bool ascending;
        const char* order;
    } rows[] = {
        {Key::Name, true, "Alpha alpha beta émile zebra\xFF Zoe"},
        {Key::Size, true, "émile zebra\xFF Zoe alpha Alpha beta"},
        {Key::Size, false, "Alpha beta alpha Zoe émile zebra\xFF"}, // equal ones stay as they lie
        {Key::State, true, "émile beta alpha Zoe zebra\xFF Alpha"},
        {Key::Place, true, "Alpha alpha beta émile zebra\xFF Zoe"},
    };
    for (const auto& row : rows) {
        actions->sort(row.key, row.ascending);
        EXPECT_EQ(order(), row.order);
        for (const ListedFile& file : world->list->files().all())
            EXPECT_EQ(world->list->findFileWithPath(file->path()), file);
    }
    EXPECT_EQ(controller.arrangedObjects(), world->list->files().all());
    EXPECT_EQ(controller.selectedObjects(), (std::vector<ListedFile>{at(1), at(2)}));
    QLocale::setDefault(before);
    const auto saved =
        world->list->readFilesInfoFileAtPath(OwnPlaces::current().dataDirectory + "/FilesInfo.Veilkeep");
    ASSERT_TRUE(saved);
    EXPECT_TRUE(std::ranges::equal(*saved, world->list->files().all(), {}, &File::name,
                                   [](const ListedFile& file) { return file->name(); }));
}

TEST_F(FileListActionsTest, SortingWaitsForTheBatch) {
    list({listedOnly("b"), listedOnly("a")});
    world->turns.run([&] {
        actions->sort(FileListActions::SortKey::Name, true);
        EXPECT_EQ(order(), "b a");
    });
    EXPECT_EQ(order(), "a b");
}

} // namespace
} // namespace veilkeep
