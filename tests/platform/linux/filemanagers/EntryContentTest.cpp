#include "tests/platform/linux/filemanagers/MenuWorld.h"
#include "tests/support/RunProgram.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QXmlStreamReader>

#include <glib.h>
#include <stdlib.h>

#include <memory>
#include <regex>

namespace veilkeep::test {
namespace {

using namespace std::string_literals;

constexpr auto oddBundle = "it's \"a\" $HOME `id` 100% %U \\ <&> ;#=@PROGRAM@ \xc3\xbc/Veilkeep.app";

struct FreeStrings {
    void operator()(char** strings) const { g_strfreev(strings); }
};
struct FreeKeyFile {
    void operator()(GKeyFile* file) const { g_key_file_free(file); }
};
using KeyFile = std::unique_ptr<GKeyFile, FreeKeyFile>;

// As file managers do it: the command is split as a shell would, then the field codes are filled in.
std::vector<std::string> splitCommand(const std::string& command) {
    char** words = nullptr;
    int count = 0;
    EXPECT_TRUE(g_shell_parse_argv(command.c_str(), &count, &words, nullptr)) << command;
    const std::unique_ptr<char*, FreeStrings> owned(words);
    std::vector<std::string> split;
    for (int number = 0; number < count; ++number)
        split.push_back(std::regex_replace(std::string(words[number]), std::regex("%%"), "%"));
    return split;
}

KeyFile keyFile(const std::string& path) {
    KeyFile file(g_key_file_new());
    EXPECT_TRUE(g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_KEEP_TRANSLATIONS, nullptr))
        << path;
    return file;
}

std::string valueOf(const KeyFile& file, const char* group, const char* key) {
    char* const text = g_key_file_get_string(file.get(), group, key, nullptr);
    const std::unique_ptr<char, decltype(&g_free)> owned(text, &g_free);
    return text ? text : "(none)";
}

class EntryContent : public ::testing::Test {
protected:
    void SetUp() override {
        m_world.addManagers({"dolphin", "nautilus", "nemo", "thunar", "caja"});
        ASSERT_FALSE(m_world.menu().install().hasFailed());
    }

    std::vector<std::string> starts(const std::string& option) const {
        return {m_world.program, option, "--", "%U"};
    }

    const MenuWorld m_world{oddBundle};
};

TEST_F(EntryContent, KeyFilesNameTheProgramAndTheirEntries) {
    const std::string menu = m_world.data("kio/servicemenus/com.ostrel.Veilkeep.desktop");
    const struct {
        std::string file;
        const char *group, *option;
    } rows[] = {
        {menu, "Desktop Action hide", "--hide"},
        {menu, "Desktop Action show", "--show"},
        {m_world.data("nemo/actions/com.ostrel.Veilkeep.hide.nemo_action"), "Nemo Action", "--hide"},
        {m_world.data("nemo/actions/com.ostrel.Veilkeep.show.nemo_action"), "Nemo Action", "--show"},
    };
    // For the "%" in the path: KDE's programs would look for the first word with two of them.
    const std::vector<std::string> byShell{"/bin/sh", "-c", "exec \"$0\" \"$@\""};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.file + row.group);
        const KeyFile file = keyFile(row.file);
        std::vector<std::string> command = splitCommand(valueOf(file, row.group, "Exec"));
        ASSERT_GT(command.size(), 3U);
        EXPECT_EQ(std::vector(command.begin(), command.begin() + 3), byShell);
        command.erase(command.begin(), command.begin() + 3);
        EXPECT_EQ(command, starts(row.option));
    }
    EXPECT_EQ(modeOf(menu) & 0111U, 0111U); // else Dolphin refuses it
    EXPECT_EQ(valueOf(keyFile(menu), "Desktop Entry", "Actions"), "hide;show;");
}

TEST_F(EntryContent, ThunarsActionsNameTheProgram) {
    QXmlStreamReader xml(QByteArray::fromStdString(readFile(m_world.config("Thunar/uca.xml"))));
    std::vector<std::vector<std::string>> commands;
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("command"))
            commands.push_back(splitCommand(xml.readElementText().toStdString()));
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    EXPECT_EQ(commands, (std::vector{starts("--hide"), starts("--show")}));
}

TEST_F(EntryContent, ScriptsHandOnEachUri) {
    const std::string uris = "file:///a%20b\nfile:///*\nfile:///%27%22$HOME\\%0A\nsmb://host/x\n";
    const std::string handedOn = "--\0file:///a%20b\0file:///*\0file:///%27%22$HOME\\%0A\0smb://host/x\0"s;
    const struct {
        std::string script;
        const char *variable, *option;
    } rows[] = {
        {m_world.data("nautilus/scripts/Hide with Veilkeep"), "NAUTILUS_SCRIPT_SELECTED_URIS", "--hide"},
        {m_world.data("nautilus/scripts/Show in Veilkeep"), "NAUTILUS_SCRIPT_SELECTED_URIS", "--show"},
        {m_world.config("caja/scripts/Hide with Veilkeep"), "CAJA_SCRIPT_SELECTED_URIS", "--hide"},
        {m_world.config("caja/scripts/Show in Veilkeep"), "CAJA_SCRIPT_SELECTED_URIS", "--show"},
    };
    const std::string arguments = m_world.tree.path("arguments");
    for (const auto& row : rows)
        for (const std::string& given : {uris, std::string()}) {
            SCOPED_TRACE(row.script + given);
            const auto prepare = [&] {
                ::setenv("ARGUMENTS", arguments.c_str(), 1);
                ::setenv(row.variable, given.c_str(), 1);
            };
            const ProgramRun run = runProgram({row.script}, {.directory = "/", .inChild = prepare});
            EXPECT_EQ(run.exitStatus, 0) << run.errors;
            const std::string rest = given.empty() ? "--\0"s : handedOn;
            EXPECT_EQ(readFile(arguments), row.option + "\0"s + rest);
        }
}

TEST(EntryContentOfNoText, OnlyScriptsCanNameAPathThatIsNone) {
    for (const char* bundle : {"a\xff/V.app", "a\nb/V.app"}) {
        const MenuWorld world(bundle);
        world.addManagers({"dolphin", "nautilus", "nemo", "thunar", "caja"});
        const auto before = world.home();
        const FileManagerChange change = world.menu().install();
        EXPECT_EQ(change.notChanged.size(), 4U);
        EXPECT_EQ(change.changed.size(), 4U);
        EXPECT_FALSE(world.menu().remove().hasFailed());
        EXPECT_EQ(world.home(), before);
    }
}

} // namespace
} // namespace veilkeep::test
