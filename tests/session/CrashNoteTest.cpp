#include "core/environment/XdgDirectories.h"
#include "core/log/Log.h"
#include "session/CrashHandler.h"
#include "session/ProcessNote.h"
#include "session/RunNote.h"
#include "tests/support/RunInChild.h"
#include "tests/support/ScratchTree.h"

#include <sys/resource.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <thread>

namespace veilkeep {
namespace {

constexpr const char* cutOff = "The last run was cut off";

void withoutCoreDumps() {
    const rlimit none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
}

int overflow(int depth) {
    volatile char room[4096];
    room[0] = static_cast<char>(depth);
    return depth < 1'000'000 ? overflow(depth + 1) + room[0] : 0;
}

class RunNoteTest : public ::testing::Test {
protected:
    // A run that does this instead of ending; the signal that ended it, 0 for none.
    template <typename Note = RunNote>
    int run(const std::function<void()>& body) const {
        const pid_t child = test::startChild([&] {
            withoutCoreDumps();
            const Note note(m_directory);
            body();
        });
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }
    bool isLogged(const std::string& text) const {
        return test::exists(Log::shared().path()) &&
               test::readFile(Log::shared().path()).find(text) != std::string::npos;
    }

    const test::ScratchTree m_tree;
    const std::string m_directory = OwnPlaces::current().stateDirectory;
    const std::string m_running = m_directory + "/Running", m_crash = m_directory + "/Crash Note";
};

TEST_F(RunNoteTest, ACrashIsTakenDownAndEndsTheProgramAllTheSame) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer listens to these signals";
#endif
    volatile int zero = 0;
    int* volatile nothing = nullptr;
    const struct {
        const char* what;
        std::function<void()> crash;
        int signal;
        std::string reason;
    } rows[] = {
        {"no such place", [&] { *nothing = 1; }, SIGSEGV, "SIGSEGV (Segmentation fault), version 0."},
        {"sent from outside", [] { ::kill(::getpid(), SIGSEGV); }, SIGSEGV, "SIGSEGV ("},
        {"stack", [&] { zero = overflow(1); }, SIGSEGV, "SIGSEGV ("},
        {"division", [&] { zero = 7 / zero; }, SIGFPE, "SIGFPE ("},
        {"abort", [] { std::abort(); }, SIGABRT, "SIGABRT (Aborted)"},
        {"an exception", [] { crashHandler::noteException("std::bad_alloc") ? std::abort() : std::_Exit(1); },
         SIGABRT, "std::bad_alloc, SIGABRT ("},
        {"another thread", [&] { std::thread([&] { *nothing = 1; }).join(); }, SIGSEGV, "SIGSEGV ("},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        ASSERT_EQ(run(row.crash), row.signal);
        const std::string note = test::readFile(m_running);
        EXPECT_EQ(note.find('/'), std::string::npos) << note;
        EXPECT_TRUE(note.ends_with("\nend\n")) << note;
        EXPECT_EQ(test::modeOf(m_running), 0600U);
        const auto crash = RunNote(m_directory).takeLastCrash();
        ASSERT_TRUE(crash);
        EXPECT_TRUE(crash->reason().starts_with(row.reason)) << crash->reason();
        EXPECT_TRUE(crash->reason().ends_with("Z")) << crash->reason();
        EXPECT_NE(::testing::PrintToString(crash->stack).find("session_test(+0x"), std::string::npos)
            << ::testing::PrintToString(crash->stack);
    }
    EXPECT_FALSE(isLogged(cutOff));
}

TEST_F(RunNoteTest, IsToldUntilItIsForgotten) {
    ASSERT_EQ(run([] { ::raise(SIGILL); }), SIGILL);
    EXPECT_TRUE(RunNote(m_directory).takeLastCrash()) << "nobody has seen it yet";
    {
        RunNote note(m_directory);
        EXPECT_TRUE(note.takeLastCrash());
        EXPECT_FALSE(note.takeLastCrash());
        note.forgetLastCrash();
    }
    EXPECT_FALSE(RunNote(m_directory).takeLastCrash());
    EXPECT_FALSE(test::exists(m_running) || test::exists(m_crash));
}

TEST_F(RunNoteTest, OtherEndsAreNoCrash) {
    const struct {
        const char* what;
        std::function<void()> end;
        int signal;
        bool isCut;
    } rows[] = {
        {"as it should", [] {}, 0, false},
        {"by force", [] { ::raise(SIGKILL); }, SIGKILL, true},
        {"a child of it crashes",
         [] {
             const pid_t child = ::fork();
             if (child == 0)
                 ::raise(SIGSEGV);
             ::waitpid(child, nullptr, 0);
             ::raise(SIGKILL);
         },
         SIGKILL, true},
    };
    for (const auto& row : rows) {
        std::filesystem::remove(Log::shared().path());
        EXPECT_EQ(run(row.end), row.signal) << row.what;
        EXPECT_FALSE(RunNote(m_directory).takeLastCrash()) << row.what;
        EXPECT_EQ(isLogged(cutOff), row.isCut) << row.what;
    }
}

TEST_F(RunNoteTest, ProcessesWithoutTheListLeaveTheirsAsWell) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer listens to these signals";
#endif
    const ProcessNote goesOn(m_directory);
    const std::string own = m_directory + "/Running-" + std::to_string(::getpid());
    run<ProcessNote>([] {});
    EXPECT_FALSE(RunNote(m_directory).takeLastCrash());
    run<ProcessNote>([] { std::abort(); });
    run<ProcessNote>([] { ::raise(SIGKILL); });
    const auto crash = RunNote(m_directory).takeLastCrash();
    ASSERT_TRUE(crash);
    EXPECT_EQ(crash->signal, SIGABRT);
    EXPECT_TRUE(test::exists(own)) << "of a process that goes on";
    ::unlink(m_crash.c_str());
    EXPECT_FALSE(RunNote(m_directory).takeLastCrash()) << "nothing else is left";
    for (const std::string& name : test::namesIn(m_directory))
        EXPECT_TRUE(!name.starts_with("Running") || m_directory + "/" + name == own) << name;
}

TEST_F(RunNoteTest, IsNotTakenBesideItsMaking) {
    const std::string own = m_directory + "/Running-" + std::to_string(::getpid());
    const pid_t starting = test::startChild([this, self = ::getpid()] {
        while (::getppid() == self)
            ProcessNote::takeOthers(m_directory, m_crash);
    });
    int taken = 0;
    for (int round = 0; round < 1000; ++round) {
        const ProcessNote note(m_directory);
        taken += test::exists(own) ? 0 : 1;
    }
    ::kill(starting, SIGKILL);
    ::waitpid(starting, nullptr, 0);
    EXPECT_EQ(taken, 0);
}

TEST(CrashNoteTest, WhateverIsInIt) {
    const std::string whole = CrashNote::beginning() + "signal 8\ntime 0\nexception \nframes 1010 99\n" +
                              "module 1000 2000 500 a lib.so\nend\n";
    const CrashNote note = CrashNote::parse(whole);
    EXPECT_TRUE(note.reason().ends_with(", 1970-01-01T00:00:00Z")) << note.reason();
    EXPECT_EQ(note.stack, (std::vector<std::string>{"a lib.so(+0x510)", "0x99"}));
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_EQ(CrashNote::parse(whole.substr(0, size)).isOfCrash(),
                  size > whole.find("signal ") + std::string("signal").size() + 1)
            << size;
    for (const char* const rubbish :
         {"", "\n\n", "signal x\nframes zz\nmodule", "signal 9999999999999\n", "\0"})
        EXPECT_TRUE(CrashNote::parse(rubbish).stack.empty()) << rubbish;
    EXPECT_FALSE(CrashNote::parse("signal 4000").reason().empty());
}

} // namespace
} // namespace veilkeep
