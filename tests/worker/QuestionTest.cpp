#include "core/log/Log.h"
#include "core/protocol/CloakWorkerComunicator.h"
#include "tests/support/BackgroundProgram.h"
#include "tests/support/RunInChild.h"
#include "tests/support/WaitUntil.h"
#include "tests/worker/WorkerFixture.h"

#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace veilkeep::test {
namespace {

// The real worker in a bundle with whatever asks in the place of the application, as an ordinary user with a
// display.
class QuestionTest : public WorkerFixture {
protected:
    // The script finds what the question is about in the file "fields", a line each.
    std::string workerBeside(const std::string& askingScript) {
        bundle("cloakTraces");
        m_tree.makeFile("T.app/Contents/MacOS/Veilkeep",
                        "#!/bin/bash\ncd " + m_tree.root() +
                            "\nwhile IFS= read -r -d '' field && [[ $field ]]; do printf '%s\\n' \"$field\"; "
                            "done >fields\n"
                            "tr '\\0' '\\n' </proc/$$/cmdline >command\n" +
                            askingScript,
                        0755);
        return bundle("cloakWorker");
    }

    RunOptions asPerson(const std::function<void()>& more = [] {}) {
        giveTreeAway();
        return {.asUser = isRoot() ? ordinaryUser : 0, .directory = {}, .inChild = [more] {
                    ::setenv("VEILKEEP_MAY_ASK", "1", 1);
                    ::setenv("DISPLAY", ":none", 1);
                    more();
                }};
    }

    static void becomePerson() {
        if (isRoot())
            becomeOrdinaryUser();
        ::setenv("DISPLAY", ":none", 1);
    }

    void giveTreeAway() {
        if (isRoot())
            runProgram({"/bin/chown", "-R", std::to_string(ordinaryUser), m_tree.root()});
    }

    // Hidden, with another item at its place by now.
    std::string makeConflict(const std::string& name = "a.txt") {
        const std::string path = m_tree.makeFile("d/" + name, "hidden one");
        expectHidden(runProgram({bundledProgram("cloakWorker"), "-p", "-hide", path}), path);
        m_tree.makeFile("d/" + name, "the one in the way");
        return path;
    }

    ProgramRun unhide(const std::string& worker, const std::string& path, const RunOptions& options) {
        return runProgram({worker, "-p", "-i", "-unhide", hiddenPathOf(path)}, options);
    }

    std::string contentOf(const std::string& path) { return exists(path) ? readFile(path) : "(none)"; }
    bool wasAsked() { return exists(m_tree.path("command")); }
};

TEST_F(QuestionTest, WhateverIsAnsweredBothItemsAreThere) {
    struct Row {
        std::string name, script;
        std::string output; // empty: the item is back at its place
        std::string visible, numbered, hidden, trash;
    };
    const std::string one = "hidden one", other = "the one in the way", none = "(none)";
    const std::string renamed = "NewFilename: " + m_tree.path("d/a 2.txt");
    const Row unanswered{"", "", "Error: 6", other, none, one, none};
    const auto unansweredBy = [&](const std::string& name, const std::string& script) {
        Row row = unanswered;
        row.name = name;
        row.script = script;
        return row;
    };
    const Row rows[] = {
        {"replace", "mv d/a.txt trash && echo Replace", "NewFilename: " + m_tree.path("d/a.txt"), one, none,
         none, other},
        {"rename", "echo Rename", renamed, other, one, none, none},
        {"cancel", "echo Cancel", "Error: 7", other, none, one, none},
        {"last answer of a program that dies", "echo Rename; kill -9 $$", renamed, other, one, none, none},
        {"another line after it", "printf 'Rename\\nReplace\\n'", renamed, other, one, none, none},
        unansweredBy("says replace but did nothing", "echo Replace"),
        unansweredBy("no line break", "printf Rename"),
        unansweredBy("nothing", "exit 0"),
        unansweredBy("crash", "kill -11 $$"),
        unansweredBy("endless output", "exec yes | tr -d '\\n'"),
        unansweredBy("closed input and output", "exec 0<&- 1>&-; exec tail -f /dev/null"),
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string path = makeConflict();
        const ProgramRun run = unhide(workerBeside(row.script), path, asPerson());
        EXPECT_EQ(run.output, row.output);
        EXPECT_EQ(run.exitStatus, row.output.starts_with("New") ? 1 : 0);
        EXPECT_EQ(contentOf(path), row.visible);
        EXPECT_EQ(contentOf(m_tree.path("d/a 2.txt")), row.numbered);
        EXPECT_EQ(contentOf(hiddenPathOf(path)), row.hidden);
        EXPECT_EQ(contentOf(m_tree.path("trash")), row.trash);
        std::filesystem::remove_all(m_tree.path("d"));
        std::filesystem::remove(m_tree.path("trash"));
    }
}

TEST_F(QuestionTest, RenamesToTheFirstNameThatIsFreeAtThatMoment) {
    const std::string path = makeConflict();
    m_tree.makeFile("d/a 2.txt", "2");
    const std::string worker = workerBeside("echo 3 >'d/a 3.txt'; echo Rename"); // taken meanwhile
    EXPECT_EQ(unhide(worker, path, asPerson()).output, "NewFilename: " + m_tree.path("d/a 4.txt"));
    EXPECT_EQ(readFile(m_tree.path("fields")).substr(path.size() + 1, 8), "a 3.txt\n");
    EXPECT_EQ(contentOf(m_tree.path("d/a 4.txt")), "hidden one");
    EXPECT_EQ(contentOf(m_tree.path("d/a 2.txt")), "2");
}

TEST_F(QuestionTest, TellsWhatItIsAboutToTheAskingProgramAlone) {
    const std::string name = "secret \"name\" %2f \xff.txt";
    const std::string path = makeConflict(name);
    struct stat inTheWay = {};
    ASSERT_EQ(::lstat(path.c_str(), &inTheWay), 0);
    const std::string worker =
        workerBeside("cat /proc/$$/environ /proc/$PPID/cmdline >>command; echo Cancel");
    expectError(unhide(worker, path, asPerson()), 7);
    EXPECT_EQ(readFile(m_tree.path("fields")), path + "\nsecret \"name\" %2f \xff 2.txt\n" +
                                                   std::to_string(inTheWay.st_dev) + "\n" +
                                                   std::to_string(inTheWay.st_ino) + "\n");
    const std::string command = readFile(m_tree.path("command"));
    EXPECT_NE(command.find("/Veilkeep\n--ask\noverwrite\n"), std::string::npos) << command;
    EXPECT_EQ(command.find("secret"), std::string::npos);
    EXPECT_NE(command.find("-unhide"), std::string::npos) << command;
    EXPECT_EQ(command.find("terces"), std::string::npos) << "of the worker that waits for the answer";
}

TEST_F(QuestionTest, AsksOnlyWhereSomebodyIsToBeAsked) {
    const struct {
        std::string name;
        std::function<void()> inChild;
        bool asRoot = false;
        bool isAsked = false;
    } rows[] = {
        {"with a display", [] {}, false, true},
        {"on Wayland", [] { ::unsetenv("DISPLAY"), ::setenv("WAYLAND_DISPLAY", "wayland-0", 1); }, false,
         true},
        {"no display", [] { ::unsetenv("DISPLAY"), ::unsetenv("WAYLAND_DISPLAY"); }},
        {"not allowed", [] { ::unsetenv("VEILKEEP_MAY_ASK"); }},
        {"nobody there", [] { ::setenv("VEILKEEP_NOBODY_THERE", "1", 1); }},
        {"under pkexec", [] { ::setenv("PKEXEC_UID", "65534", 1); }},
        {"root", [] {}, true},
    };
    const std::string path = makeConflict();
    const std::string worker = workerBeside("echo Cancel");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        if (row.asRoot && !isRoot())
            continue;
        RunOptions options = asPerson(row.inChild);
        if (row.asRoot)
            options.asUser = 0;
        expectError(unhide(worker, path, options), row.isAsked ? 7 : 6);
        EXPECT_EQ(wasAsked(), row.isAsked);
        std::filesystem::remove(m_tree.path("command"));
    }
    expectError(runProgram({worker, "-p", "-unhide", hiddenPathOf(path)}, asPerson()), 6);
    EXPECT_FALSE(wasAsked()) << "without -i";
    std::filesystem::remove(m_tree.path("T.app/Contents/MacOS/Veilkeep"));
    expectError(unhide(worker, path, asPerson()), 6);
}

// A worker that waits for an answer, and the process that asks.
class OpenQuestionTest : public QuestionTest {
protected:
    OpenQuestionTest() { // takes no notice of signals, and tells when its input ends
        m_worker = workerBeside("trap '' TERM\necho $$ >asking.new; mv asking.new asking\n"
                                "cat >/dev/null; echo >ended\n");
    }

    void begin(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), m_worker);
        const RunOptions options = asPerson();
        m_running.emplace(arguments, [&] {
            if (options.asUser != 0 && (::setgid(options.asUser) != 0 || ::setuid(options.asUser) != 0))
                ::_exit(125);
            options.inChild();
        });
        ASSERT_TRUE(waitUntil([&] { return exists(m_tree.path("asking")); }));
    }

    std::string m_worker;
    std::optional<BackgroundProgram> m_running;
};

TEST_F(OpenQuestionTest, EndsWithASignalWithItsReaderAndWithTheWorker) {
    for (const int signal : {SIGTERM, 0, SIGKILL}) {
        SCOPED_TRACE(signal);
        const std::string path = makeConflict();
        begin({"-p", "-i", "-unhide", hiddenPathOf(path)});
        if (signal == 0)
            m_running->stopReading();
        EXPECT_EQ(m_running->end(signal), signal == SIGKILL ? -1 : 0);
        if (signal == SIGTERM) {
            EXPECT_EQ(m_running->readLine(), "Error: 6");
        }
        EXPECT_TRUE(waitUntil([&] { return exists(m_tree.path("ended")); }));
        EXPECT_EQ(contentOf(path), "the one in the way");
        EXPECT_EQ(contentOf(hiddenPathOf(path)), "hidden one");
        for (const char* const left : {"d", "asking", "ended"})
            std::filesystem::remove_all(m_tree.path(left));
    }
}

// The item is hidden and its place told before anybody is asked about its traces.
TEST_F(OpenQuestionTest, AboutRecentItemsKeepsNobodyFromTheAnswer) {
    for (const bool readerGoes : {false, true}) {
        std::filesystem::remove(m_tree.path("asking"));
        const std::string path = m_tree.makeFile("d/marker.txt");
        m_tree.makeFile("home/.local/share/recently-used.xbel", "\"file://" + path + "\"");
        begin({"-p", "-i", "-hide", "-removeRecents", path});
        EXPECT_EQ(m_running->readSome(), "NewFilename: " + hiddenPathOf(path));
        EXPECT_TRUE(exists(hiddenPathOf(path)));
        if (readerGoes)
            m_running->stopReading();
        EXPECT_EQ(m_running->end(readerGoes ? 0 : SIGTERM), 4);
        expectOnlyRecord(m_tree.path("home/.local/share/Veilkeep/InProgress"),
                         {path, hiddenPathOf(path), 0, 1});
        std::filesystem::remove_all(m_tree.path("d"));
    }
}

TEST_F(QuestionTest, AboutRecentItems) {
    const struct {
        std::string name, script, wish;
        bool hasTrace = true;
        int status = 1;
        bool isCleaned = true;
        bool nobodyThere = false;
    } rows[] = {
        {"yes", "echo Yes", "", true, 2, true},
        {"no", "echo No", "", true, 3, false},
        {"other case", "echo yes", "", true, 4, true},
        {"nobody", "exit 1", "", true, 4, true},
        {"decided before", "echo No", "1", true, 1, true},
        {"decided against", "echo Yes", "0", true, 1, false},
        {"no trace", "echo No", "", false, 1, false},
        {"nobody there", "echo Yes", "", true, 1, false, true},
        {"nobody there, decided before", "echo No", "1", true, 1, true, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string path = m_tree.makeFile("d/marker.txt");
        if (row.hasTrace)
            m_tree.makeFile("home/.local/share/recently-used.xbel", "\"file://" + path + "\"");
        const std::string worker =
            workerBeside("[[ -e " + hiddenPathOf(path) + " ]] && echo >hidden; " + row.script);
        std::filesystem::remove(m_tree.path("T.app/Contents/MacOS/cloakTraces")); // the log tells then
        const ProgramRun run =
            runProgram({worker, "-p", "-i", "-hide", "-removeRecents", path}, asPerson([&] {
                           if (!row.wish.empty())
                               ::setenv("VEILKEEP_CLEAN_RECENT_ITEMS", row.wish.c_str(), 1);
                           if (row.nobodyThere)
                               ::setenv("VEILKEEP_NOBODY_THERE", "1", 1);
                       }));
        EXPECT_EQ(run.output, "NewFilename: " + hiddenPathOf(path));
        EXPECT_EQ(run.exitStatus, row.status);
        EXPECT_EQ(wasAsked(), row.status != 1);
        EXPECT_EQ(exists(m_tree.path("hidden")), row.status != 1);
        EXPECT_EQ(exists(Log::shared().path()), row.isCleaned);
        for (const std::string& left :
             {m_tree.path("d"), m_tree.path("home/.local"), m_tree.path("command"), m_tree.path("hidden")})
            std::filesystem::remove_all(left);
    }
}

TEST_F(OpenQuestionTest, EndsWhenTheUserLeaves) {
    const std::string path = makeConflict();
    giveTreeAway();
    EXPECT_TRUE(runInChild([&] {
        becomePerson();
        CloakWorkerComunicator comunicator(m_worker, m_tree.path("InProgress"));
        comunicator.setMayAsk(true, [&] { return exists(m_tree.path("asking")); });
        EXPECT_EQ(comunicator.unhideFileWithPath(hiddenPathOf(path)).errorCode(), 6);
    }));
    EXPECT_TRUE(exists(m_tree.path("asking")));
    EXPECT_TRUE(waitUntil([&] { return exists(m_tree.path("ended")); }));
}

TEST_F(QuestionTest, AboutProgramsThatWriteTheirListsBack) {
    ASSERT_EQ(::mkfifo(m_tree.path("end").c_str(), 0600), 0);
    std::filesystem::copy_file("/bin/cat", m_tree.path("vlc"));
    const std::string path = m_tree.makeFile("d/a b.mkv");
    m_tree.makeFile("home/.config/vlc/vlc-qt-interface.conf",
                    "list=file://" + m_tree.path("d") + "/a%20b.mkv, file:///x");
    const std::string worker = workerBeside("echo $ANSWER");
    giveTreeAway();
    std::vector<std::string> command = {m_tree.path("vlc"), m_tree.path("end")};
    if (isRoot())
        command.insert(command.begin(),
                       {"/usr/bin/setpriv", "--reuid=" + std::to_string(ordinaryUser), "--clear-groups"});
    const BackgroundProgram running(command);
    const std::string comm = "/proc/" + std::to_string(running.process()) + "/comm";
    ASSERT_TRUE(waitUntil([&] { return readFile(comm) == "vlc\n"; }));

    const auto hide = [&](const char* answer, const char* wish) {
        std::filesystem::remove(m_tree.path("command"));
        return runProgram({worker, "-p", "-i", "-hide", "-removeRecents", path}, asPerson([=] {
                              ::setenv("ANSWER", answer, 1);
                              if (wish)
                                  ::setenv("VEILKEEP_CLEAN_RECENT_ITEMS", wish, 1);
                          }));
    };
    expectError(hide("Cancel", "1"), 7);
    EXPECT_TRUE(exists(path));
    EXPECT_EQ(readFile(m_tree.path("fields")), path + "\nVLC\n");
    const std::pair<const char*, const char*> others[] = {
        {"Continue", "1"}, {"rubbish", "1"}, {"Cancel", "0"}, {"Cancel", nullptr}};
    for (const auto& [answer, wish] : others) {
        SCOPED_TRACE(answer);
        expectHidden(hide(answer, wish), path);
        EXPECT_EQ(wasAsked(), wish && *wish == '1');
        std::filesystem::rename(hiddenPathOf(path), path);
    }
}

} // namespace
} // namespace veilkeep::test
