#include "core/environment/XdgDirectories.h"
#include "tests/ctl/CtlCalls.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace veilkeep::test {
namespace {

// The group commands as a user or a script meets them, each in a process of its own.
class GroupCommandTest : public ::testing::Test {
protected:
    ProgramRun ctl(const std::vector<std::string>& arguments) { return runCtl(arguments, m_tree.root()); }

    void expectEach(const std::vector<CtlCall>& calls) { expectCalls(calls, m_tree.root()); }

    QJsonObject jsonRow(const std::string& command, qsizetype row) {
        return QJsonDocument::fromJson(QByteArray::fromStdString(ctl({command, "--json"}).output))
            .array()[row]
            .toObject();
    }

    ScratchTree m_tree;
};

TEST_F(GroupCommandTest, WrongUsage) {
    const std::pair<std::vector<std::string>, std::string> rows[] = {
        {{"hide", "--all", "t/a"}, "paths, '--group' and '--all' exclude each other"},
        {{"hide", "--group=Work", "--all"}, "paths, '--group' and '--all' exclude each other"},
        {{"remove", "--group=Work", "t/a"}, "'remove' takes no option '--group'"},
        {{"move", "t/a"}, "'move' needs the option '--group'"},
        {{"move", "--group=Work"}, "a path is missing"},
        {{"group"}, "what to do with a group is missing"},
        {{"group", "paint\x1b", "Work"}, "'group' does not know 'paint\\x1b'"},
        {{"group", "add", "Work", "Play"}, "usage: veilkeepctl group add [NAME]"},
        {{"group", "autohide", "Work", "maybe"}, "'maybe' is neither 'on' nor 'off'"},
        {{"group", "order", "Work", "0"}, "'0' is no position; the first one is 1"},
        {{"group", "order", "Work", "after", "Play"}, "'after' is not 'before'"},
    };
    for (const auto& [arguments, mistake] : rows) {
        const ProgramRun run = ctl(arguments);
        EXPECT_EQ(run.exitStatus, 2) << mistake;
        EXPECT_TRUE(run.errors.starts_with("veilkeepctl: " + mistake + "\n")) << run.errors;
    }
    EXPECT_FALSE(exists(OwnPlaces::current().dataDirectory));
}

TEST_F(GroupCommandTest, Groups) {
    const std::string icon = m_tree.makeFile("icon.png");
    const std::string taken = ": A group with this name exists already.\n";
    const std::string fixed = ": The name and the icon of this group stay as they are.\n";
    const std::string unknown = ": There is no such group.\n";
    expectEach({
        {{"groups"}, "shown\t-\t0\tAll Files\nshown\t-\t0\tSecret Pictures\nshown\t-\t0\tPrivate Files\n"},
        {{"group", "add"}, "New Group\n"},
        {{"group", "add"}, "New Group 1\n"},
        {{"group", "add", "Work"}, "Work\n"},
        {{"group", "add", "Work"}, "", "Work" + taken},
        {{"group", "rename", "Work", "Play"}, ""},
        {{"group", "rename", "Play", "All Files"}, "", "All Files" + taken},
        {{"group", "rename", "Play", ""}, "", ": This is no name for a group.\n"},
        {{"group", "rename", "Custom Groups", "x"}, "", "Custom Groups" + unknown},
        {{"group", "rename", "All Files", "x"}, "", "All Files" + fixed},
        {{"group", "icon", "All Files", "folder-pictures"}, "", "All Files" + fixed},
        {{"group", "icon", "Play", "./none.png"}, "", m_tree.path("none.png") + ": Item not found.\n"},
        {{"group", "icon", "Play", "./icon.png"}, ""},
        {{"group", "autohide", "Play", "on"}, ""},
        {{"group", "order", "Play", "1"}, ""},
        {{"group", "order", "Secret Pictures", "99999999999"}, ""},
        {{"group", "order", "New Group", "before", "Secret Pictures"}, ""},
        {{"group", "order", "New Group 1", "before", "Private Files"}, ""},
        {{"group", "order", "All Files", "2"}, "", "All Files: This group stays where it is.\n"},
        {{"group", "order", "Play", "before", "All Files"},
         "",
         "All Files: No group can stand before this one.\n"},
        {{"group", "remove", "All Files"},
         "",
         "Unable to remove group \"All Files\".\nSorry, but this group cannot be removed because it contains "
         "all of files.\n"},
        {{"group", "remove", "New Group"},
         "",
         "Are you sure you want to remove \"New Group\" group?\nAll files of this group will be moved to the "
         "\"All Files\" group.\nveilkeepctl: not asked, so answered with: Cancel\nveilkeepctl: Nothing was "
         "removed.\n",
         3},
        {{"groups"},
         "shown\t-\t0\tAll Files\nshown\tauto\t0\tPlay\nshown\t-\t0\tNew Group 1\nshown\t-\t0\tPrivate "
         "Files\nshown\t-\t0\tNew Group\nshown\t-\t0\tSecret Pictures\n"},
        {{"group", "remove", "--yes", "New Group"}, ""},
        {{"group", "remove", "--answer=remove", "New Group 1"}, ""},
        {{"group", "add"}, "New Group\n"},
    });
    const QJsonObject play = jsonRow("groups", 1);
    EXPECT_EQ(bytesOf(play["icon"]), icon);
    EXPECT_TRUE(play["autoHide"].toBool() && play["removable"].toBool());
    EXPECT_FALSE(jsonRow("groups", 0)["removable"].toBool(true));
}

// Whatever the name's bytes are, it names the same group in every command.
TEST_F(GroupCommandTest, HostileNames) {
    const std::string item = m_tree.makeFile("t/a");
    const std::string hidden = m_tree.path("t/.SYS_INDEX/a");
    const std::string names[] = {"line\n\x1b[31mred", "\xFF\xFE", std::string(300, 'n'), "-rf",
                                 "\xE2\x80\xAEturned %1 %n \\ ' \""};
    expectEach({{{"add", item}, item + "\n"}});
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        const std::string other = name + "/other";
        expectEach({
            {{"group", "add", "--", other}, other + "\n"},
            {{"group", "rename", "--", other, name}, ""},
            {{"group", "order", "--", name, "before", "Private Files"}, ""},
            {{"move", "--group=" + name, item}, item + "\n"},
            {{"hide", "--group=" + name}, hidden + "\n"},
            {{"list", "-0", "--group=" + name}, item + '\0'},
            {{"list", "--group=" + other}, "", other + ": There is no such group.\n"},
        });
        const QJsonObject group = jsonRow("groups", 2);
        EXPECT_EQ(bytesOf(group["name"]), name);
        EXPECT_EQ(group["state"].toString(), "hidden");
        EXPECT_EQ(group["items"].toInt(), 1);
        EXPECT_EQ(jsonRow("list", 0)["group"].toInt(), group["id"].toInt());
        expectEach({
            {{"unhide", "--group=" + name}, item + "\n"},
            {{"group", "remove", "--yes", "--", name}, ""},
            {{"list", "--group", "All Files"}, "visible\t" + item + "\n"},
        });
        EXPECT_EQ(jsonRow("list", 0)["group"].toInt(-1), 0);
    }
}

TEST_F(GroupCommandTest, HidesAndBringsBackGroupsAndAll) {
    const std::string a = m_tree.makeFile("t/a"), b = m_tree.makeFile("t/d/b"), c = m_tree.makeFile("t/c");
    const std::string d = m_tree.path("t/d");
    const auto hidden = [&](const std::string& name) { return m_tree.path("t/.SYS_INDEX/" + name); };
    expectEach({
        {{"add", "--group=Nobody", a}, "", "Nobody: There is no such group.\n"},
        {{"add", "--group=Private Files", a, c}, a + "\n" + c + "\n"},
        {{"add", b, d}, b + "\n" + d + "\n"},
        {{"move", "--group=Secret Pictures", c, "t/none"},
         c + "\n",
         "t/none: The item is not in the list.\n"},
        {{"hide", "--group=Private Files"}, hidden("a") + "\n"},
        {{"hide", "--group=Private Files"}, ""},
        {{"hide", "--group=private files"}, "", "private files: There is no such group.\n"},
        {{"list", "--group=Private Files"}, "hidden\t" + a + "\n"},
        {{"hide", d}, hidden("d") + "\n"},
        // What a hidden folder takes with it comes back with it, wherever it stands in the list.
        {{"unhide", "--all"}, a + "\n" + b + "\n" + d + "\n"},
        {{"hide", "--all"},
         hidden("a") + "\n" + hidden("c") + "\n" + hidden("d/.SYS_INDEX/b") + "\n" + hidden("d") + "\n"},
        {{"groups"}, "hidden\t-\t4\tAll Files\nshown\t-\t1\tSecret Pictures\nhidden\t-\t1\tPrivate Files\n"},
    });
    m_tree.makeFile("t/a", "another");
    const ProgramRun unhide = ctl({"unhide", "--all"});
    EXPECT_EQ(unhide.errors, "veilkeepctl: " + a + ": Item with the same name already exists.\n");
    EXPECT_EQ(unhide.exitStatus, 1);
    EXPECT_TRUE(exists(b) && exists(c));
}

} // namespace
} // namespace veilkeep::test
