#include "worker/OpenLists.h"

#include "core/names/NumberedName.h"
#include "tests/support/BackgroundProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

namespace veilkeep::test {
namespace {

TEST(OpenLists, NamesProgramsThatRunAndRemember) {
    const ScratchTree tree;
    ASSERT_EQ(::mkfifo(tree.path("end").c_str(), 0600), 0);
    std::filesystem::copy_file("/bin/cat", tree.path("soffice.bin"));
    const std::string list = "home/.config/libreoffice/4/user/registrymodifications.xcu";
    const std::string path = tree.path("d/it's <a> & \xc3\xa4.odt");
    const std::string directory = "file://" + tree.path("d");
    const std::string encoded = directory + "/it's%20%3Ca%3E%20&amp;%20%C3%A4.odt";
    struct Row {
        std::string content, path;
        bool isNamed;
    };
    const Row rows[] = {
        {"<item oor:path=\"/a/HistoryItem['" + encoded + "']\"><prop/>", path, true},
        {"<node oor:name=\"" + encoded + "\">", path, true},
        {"<node oor:name=\"" + directory + "/it&apos;s%20%3ca%3e%20%26%20%c3%a4.odt\">", path, true},
        {"<value>" + encoded + "</value>", tree.path("d"), true},
        {"<value>" + encoded + "x</value>", path, false},
        {"<value>" + encoded + "</value>", tree.path("d/a"), false},
        {"<value>file:///other/it's%20%3Ca%3E%20&amp;%20%C3%A4.odt</value>", path, false},
        {"<value>" + path + "</value>", path, false},
    };
    const auto found = [&](const Row& row) {
        tree.makeFile(list, row.content);
        return runningProgramsThatRemember(row.path);
    };
    EXPECT_TRUE(found(rows[0]).empty()) << "it does not run";
    const BackgroundProgram running({tree.path("soffice.bin"), tree.path("end")});
    const std::string comm = "/proc/" + std::to_string(running.process()) + "/comm";
    ASSERT_TRUE(waitUntil([&] { return readFile(comm) == "soffice.bin\n"; }));
    for (const Row& row : rows)
        EXPECT_EQ(found(row),
                  row.isNamed ? std::vector<std::string>{"LibreOffice"} : std::vector<std::string>())
            << row.content;
    tree.makeFile(list, rows[0].content + std::string(std::size_t{5} << 20, ' '));
    EXPECT_TRUE(runningProgramsThatRemember(path).empty()) << "too long for a look";
}

TEST(NumberedName, KeepsTheExtension) {
    const std::string longest = std::string(248, 'a') + "\xc3\xa4.txt";
    const struct {
        std::string name;
        bool isDirectory;
        std::string numbered;
    } rows[] = {
        {"a.txt", false, "a 12.txt"},
        {"a.tar.gz", false, "a.tar 12.gz"},
        {".profile", false, ".profile 12"},
        {"Folder 1.2", true, "Folder 1.2 12"},
        {"\xff.\xff", false, "\xff 12.\xff"},
        {longest, false, std::string(248, 'a') + " 12.txt"},
        {"x." + std::string(253, 'e'), false, "x." + std::string(250, 'e') + " 12"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(numberedName(row.name, 12, row.isDirectory, 255), row.numbered);
}

} // namespace
} // namespace veilkeep::test
