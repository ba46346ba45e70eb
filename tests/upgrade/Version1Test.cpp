#include "core/protocol/InProgressRecord.h"
#include "core/records/FileSystemHelpers.h"
#include "core/storage/PropertyList.h"
#include "core/storage/RecordArchive.h"
#include "core/tracking/AliasRecord.h"
#include "filelist/MainThread.h"
#include "prefs/PasswordManager.h"
#include "tests/groups/GroupWorld.h"
#include "tests/support/Repeated.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>

namespace veilkeep::test {
namespace {

using namespace std::string_literals;

const std::string home = "/home/version-one";
const std::string longName = repeated("n", 251) + ".txt";

struct Item {
    std::string name;
    std::string original; // below the home
    std::string path;
    std::uint64_t size;
    std::int64_t groupID;
    std::int32_t state;
    std::uint64_t inode; // in the alias; 0: it is empty
    ItemKind kind = ItemKind::File;
};

const Item items[] = {
    {"plain.txt", "/Documents/plain.txt", "/Documents/plain.txt", 10, 0, 0, 18},
    {"\xFF\xFE.bin", "/Documents/\xFF\xFE.bin", "/Documents/\xFF\xFE.bin", 3, 0, 0, 19},
    {"line\nbreak.txt", "/Documents/line\nbreak.txt", "/Documents/.SYS_INDEX/kaerb\nenil.txt", 4, 0, 1, 20},
    {longName, "/Documents/" + longName, "/Documents/" + longName, 4, 0, 0, 22},
    {"gone.pdf", "/Documents/gone.pdf", "/Documents/gone.pdf", 4, 4, -1, 23},
    {"link", "/Documents/link", "/Documents/link", 0, 0, 0, 0},
    {"letter.odt", "/Documents/Letters/letter.odt", "/Documents/Letters/.SYS_INDEX/rettel.odt", 8, 3, 1, 17},
    {"Party", "/Pictures/Party", "/Pictures/.SYS_INDEX/ytraP", unknownFileSize, 1, 1, 16,
     ItemKind::Directory},
    {"\xF0\x9F\x98\x80 party.jpg", "/Pictures/\xF0\x9F\x98\x80 party.jpg",
     "/Pictures/.SYS_INDEX/ytrap \xED\xB8\x80\xED\xA0\xBD.jpg", 5, 1, 1, 21},
};

struct Row {
    std::string name;
    std::string iconPath;
    std::int64_t groupID;
    int state = 0;
    std::int64_t count = 0;
    bool isHeader = false;
    bool canBeRemoved = true;
    std::optional<bool> autoHide = {};
    std::string icon = {};
};

const Row rows[] = {
    {"All Files", "folder-documents_alt", 0, 0, 0, false, false},
    {"Custom Groups", "folder-documents_alt", 0, 0, 0, true, false},
    {"Secret Pictures", "folder-pictures", 1},
    {"Private Files", "folder_private", 2, 1},
    {"Letters", home + "/Pictures/icon.png", 3, 0, 1, false, true, true, "\x89PNG\r\n\x1A\n icon"},
    {"Gr\xC3\xBC\xC3\x9F"
     "e \xF0\x9F\x98\x80",
     "folder-generic", 4},
};

// Of the record "plain.txt".
const PropertyDictionary laterKeys = {
    {"LaterText", "gr\xC3\xBCn"},
    {"LaterBytes", Bytes{"\0\xFF"s}},
    {"LaterNumber", std::uint64_t{18446744073709551615u}},
    {"LaterNegative", std::int64_t{-7}},
    {"LaterReal", 1.5},
    {"LaterFlag", true},
    {"LaterNothing", Null{}},
    {"LaterList", ValueList{std::int64_t{1}, "two", PropertyDictionary{{"three", ValueList{}}}}},
};
const PropertyDictionary laterBeside = {{"sort", "Name"}, {"ascending", false}};
const Value laterColour = ValueList{std::int64_t{255}, std::int64_t{128}, std::int64_t{0}};

std::string fixture(const std::string& name) {
    return UPGRADE_FILES "/version-1/" + name;
}

RecordArchive archiveIn(const std::string& path, const char* key) {
    auto archive = decodeArchive(readFile(path), key);
    if (!archive)
        throw std::runtime_error("cannot be read: " + path);
    return std::move(*archive);
}

void expectItem(const File& file, const Item& item, std::int32_t state) {
    SCOPED_TRACE(item.original);
    EXPECT_EQ(file.name(), item.name);
    EXPECT_EQ(file.originalPath(), home + item.original);
    EXPECT_EQ(file.path(), home + item.path);
    EXPECT_EQ(file.size(), item.size);
    EXPECT_EQ(file.isFile(), item.kind != ItemKind::Directory);
    EXPECT_EQ(file.groupID(), item.groupID);
    EXPECT_EQ(file.state(), state);
    const auto alias = decodeAliasRecord(file.alias().value_or(std::string_view()));
    ASSERT_EQ(alias.has_value(), item.inode != 0);
    if (!alias)
        return;
    EXPECT_EQ(alias->item.inode, item.inode);
    EXPECT_EQ(alias->item.kind, item.kind);
    EXPECT_EQ(alias->lastPath, home + item.path);
    EXPECT_EQ("/home" + alias->volumePath, home + item.path);
    EXPECT_EQ(alias->volume.uuid, "0b0e7a5c-4d0f-4f7e-9a55-56454b303031");
    EXPECT_EQ(alias->volume.fileSystemType, "ext4");
}

void expectRow(const Group& group, const Row& row) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(group.name(), row.name);
    EXPECT_EQ(group.iconPath(), row.iconPath);
    EXPECT_EQ(group.iconData(), row.icon);
    EXPECT_EQ(group.groupID(), row.groupID);
    EXPECT_EQ(group.state(), row.state);
    EXPECT_EQ(group.countOfFiles(), row.count);
    EXPECT_EQ(group.isHeaderRow(), row.isHeader);
    EXPECT_EQ(group.canBeRemoved(), row.canBeRemoved);
    EXPECT_EQ(group.autoHide(), row.autoHide);
}

// Copies in a scratch home, of which the items' home is none.
class Version1Test : public ::testing::Test {
protected:
    void SetUp() override {
        if (exists(home))
            GTEST_SKIP() << home << " exists here";
        const OwnPlaces places = OwnPlaces::current();
        std::filesystem::create_directories(places.dataDirectory);
        std::filesystem::create_directories(std::filesystem::path(places.defaultsFile).parent_path());
        for (const char* const name : {"FilesInfo.Veilkeep", "GroupsInfo.Veilkeep", "AutoHideItemsAreOut"})
            std::filesystem::copy_file(fixture(name), places.dataDirectory + "/" + name);
        std::filesystem::copy(fixture("InProgress"), places.inProgressDirectory);
        std::filesystem::copy_file(fixture("com.ostrel.Veilkeep.plist"), places.defaultsFile);
    }

    static std::string filesPath() { return OwnPlaces::current().dataDirectory + "/FilesInfo.Veilkeep"; }

    const ScratchTree m_tree;
};

TEST_F(Version1Test, EachFieldIsRead) {
    const auto loaded = FilesInfoFile(filesPath()).load();
    ASSERT_TRUE(loaded.files && !loaded.trouble);
    ASSERT_EQ(loaded.files->size(), std::size(items));
    for (std::size_t position = 0; position < std::size(items); ++position)
        expectItem(loaded.files->at(position), items[position], items[position].state);
    for (const auto& [key, value] : laterKeys)
        EXPECT_EQ(*loaded.files->front().properties().find(key), value) << key.text();

    const auto groups = GroupsInfoFile(GroupWorld::dataPath()).load();
    ASSERT_TRUE(groups.groups && !groups.trouble);
    ASSERT_EQ(groups.groups->size(), std::size(rows));
    for (std::size_t position = 0; position < std::size(rows); ++position)
        expectRow(groups.groups->at(position), rows[position]);
    EXPECT_EQ(*groups.groups->at(4).properties().find("LaterColour"), laterColour);
    EXPECT_TRUE(AutoHideMark(OwnPlaces::current().dataDirectory).isSet());
}

// What an item is known again by, to the last bit.
TEST_F(Version1Test, AnAliasIsRead) {
    const auto loaded = FilesInfoFile(filesPath()).load();
    const auto alias = decodeAliasRecord(loaded.files->front().alias().value());
    ASSERT_TRUE(alias);
    const FileIdentity expected = {.kind = ItemKind::File,
                                   .inode = 18,
                                   .size = 10,
                                   .modificationTime = {1769860800, 500'000'000},
                                   .birthTime = FileTime{1795335590, 379'918'462},
                                   .handle = FileHandle{1, "\x12\0\0\0\xBE|F\xC7"s}};
    EXPECT_EQ(alias->item, expected);
}

TEST_F(Version1Test, AnInProgressRecordIsRead) {
    const auto record = recordFromDictionary(
        parsePropertyList(readFile(fixture("InProgress/d9866b4fb0408dea.plist"))).value());
    ASSERT_TRUE(record);
    EXPECT_EQ(*record, (InProgressRecord{home + "/Documents/cut-off.txt",
                                         home + "/Documents/.SYS_INDEX/ffo-tuc.txt", 0, 1}));
}

TEST_F(Version1Test, SettingsAreReadAndKept) {
    UserDefaults defaults;
    EXPECT_EQ(defaults.boolean("PlaySounds"), false);
    EXPECT_EQ(defaults.boolean("CleanRecentItems"), true);
    EXPECT_EQ(defaults.boolean("AutoHideOnLock"), false);
    EXPECT_EQ(defaults.string("MainWindow.geometry"), "10 20 900 600");
    EXPECT_EQ(defaults.string("LastUpdateCheck"), "2026-01-31T12:00:00Z");
    EXPECT_EQ(defaults.integer("LaterNumber"), -42);
    EXPECT_EQ(defaults.real("LaterReal"), 0.25);
    EXPECT_EQ(defaults.string("LaterText"), "gr\xC3\xBCn & <fett> \xF0\x9F\x98\x80");
    EXPECT_EQ(defaults.data("LaterData"), "\0\xFF\x01"s);
    EXPECT_EQ(defaults.value("LaterList"),
              std::optional<Value>(ValueList{"a", PropertyDictionary{{"b", std::int64_t{1}}}}));
    PasswordManager passwords(defaults);
    EXPECT_TRUE(passwords.isPasswordEnabled());
    EXPECT_TRUE(passwords.checkPassword("secret"));
    EXPECT_FALSE(passwords.checkPassword("Secret"));

    PropertyDictionary expected = parsePropertyList(readFile(OwnPlaces::current().defaultsFile)).value();
    defaults.set("PlaySounds", true);
    expected.set("PlaySounds", true);
    ASSERT_TRUE(defaults.synchronize());
    EXPECT_EQ(parsePropertyList(readFile(OwnPlaces::current().defaultsFile)).value(), expected);
}

// Started without the items' disk: all of them are missing, and none is dropped.
TEST_F(Version1Test, AStartKeepsAll) {
    const RecordArchive files = archiveIn(filesPath(), "files");
    const RecordArchive groups = archiveIn(GroupWorld::dataPath(), "groups");
    {
        GroupWorld world({}, false);
        world.list.list->load();
        world.groups.start();
        world.list.list->check();
        MainThread::runUntil([&] { return !world.list.list->brokenFiles().isSearching(); });
        ASSERT_EQ(world.list.list->files().size(), std::size(items) + 1);
        for (std::size_t position = 0; position < std::size(items); ++position)
            expectItem(*world.list.list->files().all()[position], items[position], File::Broken);
        EXPECT_EQ(world.list.list->files().all().back()->originalPath(), home + "/Documents/cut-off.txt");
        EXPECT_EQ(namesIn(OwnPlaces::current().inProgressDirectory), std::set<std::string>());
        world.groups.setAutoHide(true, world.row(3)); // something to be saved
        EXPECT_TRUE(world.list.list->saveDataToDisk());
    }
    RecordArchive saved = archiveIn(filesPath(), "files");
    ASSERT_EQ(saved.records.size(), files.records.size() + 1);
    for (std::size_t position = 0; position < files.records.size(); ++position) {
        PropertyDictionary expected = files.records[position];
        expected.set("State", std::int64_t{File::Broken});
        EXPECT_EQ(saved.records[position], expected) << items[position].original;
    }
    ASSERT_EQ(saved.unknown.size(), 1U);
    EXPECT_EQ(saved.unknown.front().key, PropertyKey("laterBeside"));
    EXPECT_EQ(saved.unknown.front().value, Value(laterBeside));

    saved = archiveIn(GroupWorld::dataPath(), "groups");
    ASSERT_EQ(saved.records.size(), groups.records.size());
    for (std::size_t position = 0; position < groups.records.size(); ++position) {
        PropertyDictionary expected = groups.records[position];
        if (position == 3)
            expected.set("AutoHide", true);
        EXPECT_EQ(saved.records[position], expected) << rows[position].name;
    }
    ASSERT_EQ(saved.unknown.size(), 1U);
    EXPECT_EQ(saved.unknown.front().value, Value(laterBeside));
}

TEST_F(Version1Test, TheCommandLineListsAll) {
    const std::string password = m_tree.makeFile("password", "secret\n");
    RunOptions options;
    options.inChild = [&] { ::dup2(::open(password.c_str(), O_RDONLY), STDIN_FILENO); };
    const ProgramRun run =
        runProgram({bundledProgram("veilkeepctl"), "list", "--json", "--password-stdin"}, options);
    EXPECT_EQ(run.exitStatus, 0) << run.errors;
    const QJsonArray listed = QJsonDocument::fromJson(QByteArray::fromStdString(run.output)).array();
    ASSERT_EQ(listed.size(), std::ssize(items) + 1) << run.output;
    for (std::size_t position = 0; position < std::size(items); ++position) {
        const QJsonObject row = listed[static_cast<qsizetype>(position)].toObject();
        const Item& item = items[position];
        const QJsonValue original = row["originalPath"];
        EXPECT_EQ(original.isString()
                      ? original.toString().toStdString()
                      : QByteArray::fromBase64(original["base64"].toString().toLatin1()).toStdString(),
                  home + item.original);
        EXPECT_EQ(row["group"].toInteger(), item.groupID);
        EXPECT_EQ(row["kind"].toString(), item.kind == ItemKind::Directory ? "folder" : "file");
        EXPECT_EQ(row["state"].toString(), item.state == File::Hidden    ? "hidden"
                                           : item.state == File::Visible ? "visible"
                                                                         : "broken");
    }
}

} // namespace
} // namespace veilkeep::test
