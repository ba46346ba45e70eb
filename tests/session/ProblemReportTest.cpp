#include "session/ProblemReport.h"

#include "core/environment/XdgDirectories.h"
#include "core/log/Log.h"
#include "format/PrintableName.h"
#include "session/ReportMask.h"
#include "tests/support/HostileNames.h"
#include "tests/support/Repeated.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <execinfo.h>

namespace veilkeep {
namespace {

const std::string bundle = "/opt/Veilkeep.app";

struct Masked {
    const char* name;
    std::string text;
    std::string masked;
};

TEST(ReportMaskTest, LeavesNothingOfTheUsersItems) {
    const std::vector<std::string> names = {"tax.pdf", "tax", "a\nb", ""};
    const Masked rows[] = {
        {"nothing to hide", "Watching for the user's leaving.", "Watching for the user's leaving."},
        {"path", "Hidden: /home/u/x", "Hidden: <path>"},
        {"path with a reason", "Not moved: rename /home/u/a b.txt: No space left on device",
         "Not moved: rename <path>: No space left on device"},
        {"name that looks like a reason", "rename /home/u/x: my own: Permission denied",
         "rename <path>: Permission denied"},
        {"blanks, colons, a second path", "moved /a b: c d/e to /f g", "moved <path>"},
        {"in brackets", "cannot rename [/home/u/a] [/b]", "cannot rename <path>"},
        {"URI", "opening file:///home/u/a%20b", "opening <path>"},
        {"relative", "in my/folder x", "in <path>"},
        {"home", "~/x", "<path>"},
        {"quoted", "Group 'My secret' is gone", "Group <name>"},
        {"quoted with a quote in it", "Group \"My \"own\" secret\" gone", "Group <name>"},
        {"typographic quotes", "Gruppe \u201eGeheim\u201c fehlt", "Gruppe <name>"},
        {"known name", "2 copies of tax.pdf and tax", "2 copies of <name> and <name>"},
        {"known name as the log writes it", "copies of a\\nb", "copies of <name>"},
        {"own file", "starting " + bundle + "/Contents/MacOS/cloakWorker: done",
         "starting " + bundle + "/Contents/MacOS/cloakWorker: done"},
        {"own file and another", bundle + "/Contents/Info.plist and /etc/x",
         bundle + "/Contents/Info.plist and <path>"},
        {"not quite an own file", bundle + "/Contents/../../home", "<path>"},
        {"beside the own files", bundle + "x/y", "<path>"},
        {"each line", "a /b\n\nc /d\n", "a <path>\n\nc <path>\n"},
    };
    for (const Masked& row : rows)
        EXPECT_EQ(maskedForReport(row.text, names, bundle), row.masked) << row.name;
    for (const std::string& name : test::hostileNames()) {
        const std::string line = "Lost: open " + printableName("/home/" + name) + ": Permission denied";
        EXPECT_EQ(maskedForReport(line, {}, bundle), "Lost: open <path>: Permission denied") << name;
    }
}

TEST(ProblemReportTest, IsAPrivateFileThatTellsWhatHappenedAndOfNoItem) {
    const test::ScratchTree tree;
    const std::string directory = OwnPlaces::current().stateDirectory;
    Log log(Log::shared().path());
    log.write("the first line " + test::repeated("x", 40 << 10));
    log.write("Not moved: rename /home/marker: Permission denied");
    log.write("the last line");
    void* frames[32];
    const int count = ::backtrace(frames, 32);
    const ProblemReport report{
        "cannot open [/home/marker]", "xcb", std::vector<void*>(frames, frames + count), {"marker"}};

    const auto path = ProblemReport::write(report.text());

    ASSERT_TRUE(path);
    EXPECT_TRUE(path->starts_with(directory + "/Problem Report ")) << *path;
    EXPECT_EQ(test::modeOf(*path), 0600U);
    const std::string text = test::readFile(*path);
    for (const char* const part :
         {"Veilkeep 0.", "Reason: cannot open <path>\n", "Qt: 6.", "Kernel: linux", "Display: xcb\n",
          "libc.so", "rename <path>: Permission denied\n", "the last line"})
        EXPECT_NE(text.find(part), std::string::npos) << part << "\n" << text;
    for (const char* const part : {"marker", "/home", "/lib", "the first line"})
        EXPECT_EQ(text.find(part), std::string::npos) << part << "\n" << text;
    EXPECT_LT(text.size(), std::size_t{64} << 10);
}

TEST(ProblemReportTest, KeepsTheNewestTen) {
    const test::ScratchTree tree;
    const std::string directory = OwnPlaces::current().stateDirectory;
    ASSERT_TRUE(directory.starts_with(tree.root()));
    for (const char* const name : {"2020-01-01T00-00-00Z", "2021-01-01T00-00-00Z"})
        tree.makeFile(directory.substr(tree.root().size() + 1) + "/Problem Report " + name + ".txt");
    const std::string other =
        tree.makeFile(directory.substr(tree.root().size() + 1) + "/My Problem Report 2019.txt");
    std::string last;
    for (int number = 0; number < 12; ++number) {
        const auto path = ProblemReport::write(ProblemReport{"again", "wayland", {}, {}}.text());
        ASSERT_TRUE(path);
        last = *path;
    }
    std::ptrdiff_t reports = 0;
    for (const std::string& name : test::namesIn(directory))
        reports += name.starts_with("Problem Report 20") ? 1 : 0;
    EXPECT_EQ(reports, std::ptrdiff_t{ProblemReport::mostKept});
    EXPECT_TRUE(test::exists(last)) << last;
    EXPECT_FALSE(test::exists(directory + "/Problem Report 2021-01-01T00-00-00Z.txt"));
    EXPECT_TRUE(test::exists(other));
}

} // namespace
} // namespace veilkeep
