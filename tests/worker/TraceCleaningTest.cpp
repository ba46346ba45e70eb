#include "core/base/FileUri.h"
#include "core/log/Log.h"
#include "core/names/TraceNames.h"
#include "core/storage/UserDefaults.h"
#include "tests/support/WaitUntil.h"
#include "tests/worker/WorkerFixture.h"

#include <sys/stat.h>

#include <filesystem>
#include <fstream>

namespace veilkeep::test {
namespace {

const std::string list = "home/.local/share/recently-used.xbel";

class TraceCleaning : public WorkerFixture {
protected:
    void remember(const std::string& path) {
        m_tree.makeFile(
            list, "<xbel>\n  <bookmark href=\"" + fileUri(path, UriSpelling::GLib) + "\"/>\n</xbel>\n", 0600);
    }

    // A bundle with the real worker and whatever takes the place of cloakTraces.
    std::string workerBeside(const std::string& tracesScript) {
        if (!tracesScript.empty())
            m_tree.makeFile("T.app/Contents/MacOS/cloakTraces", "#!/bin/bash\n" + tracesScript, 0755);
        return bundle("cloakWorker");
    }

    ProgramRun hide(const std::string& worker, const std::string& path) {
        return runProgram({worker, "-p", "-i", "-hide", "-removeRecents", path});
    }
};

// The one that waits for the worker reads its output to the end.
TEST_F(TraceCleaning, NobodyWaitsForIt) {
    ASSERT_EQ(::mkfifo(m_tree.path("go").c_str(), 0600), 0);
    const std::string worker = workerBeside("exec >" + m_tree.path("seen") +
                                            "\nreadlink /proc/$$/cwd /proc/$$/fd/0 /proc/$$/fd/2\n"
                                            "printf '%s\\n' \"$@\"\n[[ $(ps -o sid= $$) -eq $$ ]] && echo "
                                            "own session\nfind /proc/$$/fd -lname 'pipe:*'\nread -r <" +
                                            m_tree.path("go") + "\necho done\n");
    const std::string item = m_tree.makeFile("d/a b");
    remember(item);
    expectHidden(hide(worker, item), item);
    std::ofstream(m_tree.path("go")) << "\n"; // blocks until it is read
    const auto isDone = [&] { return readFile(m_tree.path("seen")).ends_with("done\n"); };
    ASSERT_TRUE(waitUntil(isDone));
    EXPECT_EQ(readFile(m_tree.path("seen")), "/\n/dev/null\n/dev/null\n" + item + "\nown session\ndone\n");
}

TEST_F(TraceCleaning, WhateverStandsAtTheListsPlaceTheHideGoesWell) {
    const std::string item = m_tree.path("d/a");
    const auto hideAgain = [&] {
        m_tree.makeFile("d/a");
        expectHidden(hide(bundledProgram("cloakWorker"), item), item);
        std::filesystem::remove_all(m_tree.path("d/.SYS_INDEX"));
    };
    std::filesystem::create_directories(m_tree.path("home/.local/share"));
    ASSERT_EQ(::mkfifo(m_tree.path(list).c_str(), 0600), 0);
    hideAgain();
    std::filesystem::remove(m_tree.path(list));
    m_tree.makeFile(list, "\"/a\"<damaged");
    hideAgain();
    const auto isTold = [] {
        return exists(Log::shared().path()) && !readFile(Log::shared().path()).empty();
    };
    ASSERT_TRUE(waitUntil(isTold));
    EXPECT_EQ(readFile(m_tree.path(list)), "\"/a\"<damaged");
}

// Nothing that a desktop kept, and nothing of our own, tells of the item afterwards.
TEST_F(TraceCleaning, NoNameIsLeftAnywhere) {
    const std::string item =
        m_tree.makeFile("d/marker name/inside.png").substr(0, m_tree.path("d/marker name").size());
    remember(item + "/inside.png");
    m_tree.makeFile("home/.local/share/RecentDocuments/marker.desktop",
                    "[Desktop Entry]\nURL[$e]=" + fileUri(item, UriSpelling::Qt) + "\n");
    for (const std::string& name : thumbnailNamesOf(item + "/inside.png"))
        m_tree.makeFile("home/.cache/thumbnails/normal/" + name, fileUri(item, UriSpelling::GLib));
    const ProgramRun run = runProgram({bundledProgram("veilkeepctl"), "hide", item});
    EXPECT_EQ(run.exitStatus, 0) << run.errors;
    const auto leftovers = [&] { // beside the list itself
        return runProgram(
                   {"/bin/grep", "-rlEa", "--exclude=FilesInfo.Veilkeep*", "marker|rekram", m_tree.home()})
                   .output +
               runProgram({"/usr/bin/find", m_tree.home(), "-name", "*marker*"}).output;
    };
    EXPECT_TRUE(waitUntil([&] { return leftovers().empty(); })) << leftovers();
}

TEST_F(TraceCleaning, TheCommandLineHandsTheAnswerOn) {
    const std::string item = m_tree.makeFile("d/marker");
    remember(item);
    workerBeside("");
    std::filesystem::copy_file(bundledProgram("veilkeepctl"),
                               m_tree.path("T.app/Contents/MacOS/veilkeepctl"));
    UserDefaults defaults;
    defaults.set("CleanRecentItems", false);
    ASSERT_TRUE(defaults.synchronize());
    const std::string ctl = m_tree.path("T.app/Contents/MacOS/veilkeepctl");
    EXPECT_EQ(runProgram({ctl, "hide", item}).exitStatus, 0);
    EXPECT_FALSE(exists(Log::shared().path()));
    EXPECT_EQ(runProgram({ctl, "unhide", item}).exitStatus, 0);
    defaults.set("CleanRecentItems", true);
    ASSERT_TRUE(defaults.synchronize());
    EXPECT_EQ(runProgram({ctl, "hide", item}).exitStatus, 0);
    EXPECT_TRUE(exists(Log::shared().path()));
}

} // namespace
} // namespace veilkeep::test
