#include "groups/EnteredName.h"
#include "groups/GroupEditController.h"
#include "tests/groups/GroupWorld.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

using Tab = GroupEditView::Tab;

// The form without a window; what the user does while it is open are the steps.
class FormView : public GroupEditView {
public:
    void open(GroupEditController& controller) override {
        m_controller = &controller;
        isOpen = true;
    }
    void run() override {
        steps(*m_controller);
        isOpenAfterSteps = isOpen;
        isOpen = false;
    }
    void close() override { isOpen = false; }
    void showTab(Tab shown) override { tab = shown; }
    QString name() const override { return nameField; }
    void setName(const QString& name) override { nameField = name; }
    void showIcon(const Group& lookingLike) override { image = std::string(lookingLike.iconData()); }
    std::optional<std::size_t> selectedIcon() const override { return selected; }
    void selectIcon(std::optional<std::size_t> item) override { selected = item; }
    bool autoHide() const override { return box; }
    void setAutoHide(bool autoHide) override { box = autoHide; }
    void tell(const QString& text) override { line = text; }

    std::function<void(GroupEditController&)> steps = [](auto&) {};
    bool isOpen = false, isOpenAfterSteps = false;
    Tab tab = Tab::ErrorExist;
    QString nameField, line;
    std::string image;
    std::optional<std::size_t> selected;
    bool box = false;

private:
    GroupEditController* m_controller = nullptr;
};

struct EditScratch {
    ScratchTree tree;
};

struct EditWorld : EditScratch, GroupWorld {
    EditWorld() { started(); }

    const Group& edit(const std::string& name, std::function<void(GroupEditController&)> steps) {
        const ListedGroup group = groups.groupForName(name);
        view.steps = std::move(steps);
        controller.editGroup(group);
        return *group;
    }
    std::string kept(const std::string& name) const { return icons + "/" + name; }

    FormView view;
    std::string icons = OwnPlaces::current().dataDirectory + "/Icons";
    KeptIcons keptIcons{icons};
    std::optional<std::string> chosenFile;
    GroupEditController controller{{groups, view, images, keptIcons, [this] { return chosenFile; }}};
};

TEST(GroupEditTest, OkLeavesWhatWasNotChanged) {
    EditWorld world;
    world.groups.setNewName("\xff bytes", "folder_private", world.autoHideGroup());
    for (const std::string name : {"Secret Pictures", "\xff bytes"}) {
        const Group before = *world.groups.groupForName(name);
        const Group& after = world.edit(name, [](auto& controller) { controller.apply(); });
        EXPECT_EQ(after.name(), name);
        EXPECT_EQ(after.iconPath(), before.iconPath()) << name;
        EXPECT_EQ(after.iconData(), before.iconData()) << name;
        EXPECT_EQ(after.autoHide().value_or(false), before.autoHide().value_or(false)) << name;
    }
    world.view.steps = [](auto&) { ADD_FAILURE() << "it cannot be edited"; };
    for (const char* const fixed : {"All Files", "Custom Groups", "nobody's"}) {
        const ListedGroup group = world.groups.groupForName(fixed); // null for nobody's
        world.controller.editGroup(group);
        world.controller.editCell(group, "x");
    }
}

TEST(GroupEditTest, AppliesOrRefuses) {
    EditWorld world;
    const std::string photo = world.tree.makeFile("photo.png", "photo"),
                      empty = world.tree.makeFile("no.png");
    FormView& view = world.view;
    const auto named = [&view](const char* name) {
        return [&view, name](auto& controller) { view.nameField = name, controller.apply(); };
    };
    const auto choose = [&world](auto& controller, const std::string& path) {
        world.chosenFile = path;
        controller.changeFileLocation();
    };
    const std::string own = "Private Files", ownIcon = "folder_private";
    const struct {
        const char* what;
        std::function<void(GroupEditController&)> steps;
        std::string name, iconPath, image;
        bool isOpen = false;
        Tab tab = Tab::SetName;
        bool isTold = false;
    } rows[] = {
        {"another name", named("Letters"), "Letters", ownIcon, ownIcon},
        {"letter case", named("private files"), "private files", ownIcon, ownIcon},
        {"taken", named("Secret Pictures"), own, ownIcon, ownIcon, true, Tab::ErrorExist},
        {"taken, back, another one",
         [&](auto& controller) {
             named("Secret Pictures")(controller);
             controller.back();
             EXPECT_EQ(view.tab, Tab::SetName);
             named("Letters")(controller);
         },
         "Letters", ownIcon, ownIcon},
        {"empty", named(""), own, ownIcon, ownIcon, true, Tab::SetName, true},
        {"two lines", named("a\nb"), own, ownIcon, ownIcon, true, Tab::SetName, true},
        {"too long",
         [&](auto& controller) {
             view.nameField = QString(EnteredName::longest + 1, u'x');
             controller.apply();
         },
         own, ownIcon, ownIcon, true, Tab::SetName, true},
        {"cancelled",
         [&](auto& controller) { view.nameField = "Letters", view.selected = 2, controller.cancel(); }, own,
         ownIcon, ownIcon},
        {"no image",
         [&](auto& controller) {
             choose(controller, empty);
             EXPECT_EQ(view.image, ownIcon);
             EXPECT_FALSE(view.line.isEmpty());
             controller.apply();
         },
         own, ownIcon, ownIcon, false, Tab::SetName, true},
        {"a file, then no image",
         [&](auto& controller) { choose(controller, photo), choose(controller, empty), controller.apply(); },
         own, photo, "photo", false, Tab::SetName, true},
        {"a file that is gone by then",
         [&](auto& controller) {
             choose(controller, world.tree.makeFile("gone.png", "gone"));
             std::filesystem::remove(world.tree.path("gone.png"));
             controller.apply();
             EXPECT_EQ(view.image, ownIcon);
         },
         own, ownIcon, ownIcon, true, Tab::SetName, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        world.chosenFile.reset();
        const ListedGroup group = world.groups.groupForName(own);
        const Group& edited = world.edit(own, row.steps);
        EXPECT_EQ(edited.name(), row.name);
        EXPECT_EQ(edited.iconPath(), row.iconPath);
        EXPECT_EQ(edited.iconData(), row.image);
        EXPECT_EQ(world.view.isOpenAfterSteps, row.isOpen);
        EXPECT_EQ(world.view.tab, row.tab);
        EXPECT_EQ(!world.view.line.isEmpty(), row.isTold) << world.view.line.toStdString();
        EXPECT_EQ(GroupWorld::savedNames(), world.names());
        world.groups.setNewName(own, ownIcon, group);
    }
}

TEST(GroupEditTest, TheIconOfAnImageFileIsNeverLostWithoutAWord) {
    EditWorld world;
    const std::string file = world.tree.makeFile("photo.png", "photo"), empty = world.tree.makeFile("no.png");
    const ListedGroup group = world.row(3);
    world.groups.setNewName("Photos", file, group);
    const QString& line = world.view.line;
    world.edit("Photos", [&](auto& controller) {
        const QString warning = line;
        EXPECT_FALSE(warning.isEmpty());
        controller.takeImageFile(empty);
        EXPECT_TRUE(line.endsWith(warning) && line != warning) << line.toStdString();
        controller.takeImage("");
        EXPECT_TRUE(line.endsWith(warning) && line != warning) << line.toStdString();
        controller.resetToDefault();
        EXPECT_EQ(line, warning);
        controller.takeImageFile(file);
        EXPECT_EQ(line, QString());
    });
    world.view.steps = [](auto& controller) { controller.apply(); };
    world.controller.editCell(group, "Trip");
    EXPECT_EQ(group->iconPath(), file);
}

TEST(GroupEditTest, FollowsTheRowItself) {
    EditWorld world;
    const ListedGroup first = world.groups.addGroup(), second = world.groups.addGroup();
    for (const ListedGroup& group : {first, second})
        world.groups.setNewName("Twin", "folder_drop", group);
    world.view.steps = [&](auto& controller) { world.view.box = true, controller.apply(); };
    world.controller.editGroup(second);
    EXPECT_EQ(second->autoHide(), true) << "its own name, though another row has it too";
    EXPECT_FALSE(first->autoHide().value_or(false));
    world.view.steps = [&](auto& controller) {
        world.expectRemoval(second);
        world.groups.removeGroup(second);
        world.view.nameField = "Late";
        controller.apply();
    };
    world.controller.editGroup(second);
    EXPECT_TRUE(world.view.isOpenAfterSteps);
    EXPECT_FALSE(world.view.line.isEmpty());
    EXPECT_FALSE(world.groups.ifExistsGroupWithName("Late"));
}

TEST(GroupEditTest, KeepsDroppedImagesAsLongAsAGroupHasThem) {
    EditWorld world;
    const auto drop = [&](const char* image) {
        return [image](auto& controller) { controller.takeImage(image), controller.apply(); };
    };
    world.edit("Private Files", drop("one"));
    world.edit("Secret Pictures", drop("two"));
    writeFile(world.kept("notes.txt"), "mine");
    EXPECT_EQ(readFile(world.kept("Icon.png")), "one");
    EXPECT_EQ(readFile(world.kept("Icon 2.png")), "two");
    EXPECT_EQ(modeOf(world.kept("Icon.png")), 0600U);
    world.edit("Private Files", drop("three"));
    EXPECT_EQ(namesIn(world.icons), (std::set<std::string>{"Icon 2.png", "Icon 3.png", "notes.txt"}));

    std::filesystem::remove_all(world.icons);
    world.tree.makeFile(world.icons.substr(world.tree.root().size() + 1), "in the way");
    const Group& group = world.edit("Private Files", drop("four"));
    EXPECT_TRUE(world.view.isOpenAfterSteps);
    EXPECT_FALSE(world.view.line.isEmpty());
    EXPECT_EQ(group.iconData(), "three");
}

} // namespace
} // namespace veilkeep::test
