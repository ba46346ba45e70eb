// Installed programs that make images of films.

#include "tests/support/ScratchTree.h"
#include "tests/support/WaitUntil.h"
#include "tests/widgets/preview/PreviewFiles.h"
#include "widgets/preview/PreviewMaker.h"
#include "widgets/preview/ThumbnailerRun.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <thread>

namespace veilkeep {
namespace {

using namespace veilkeep::test;
using namespace std::chrono_literals;

// A thumbnailer that is a script, and what it wrote about its runs.
class Thumbnailing : public ::testing::Test {
protected:
    Thumbnailing() {
        m_tree.makeDirectory("run", 0700);
        ::setenv("XDG_RUNTIME_DIR", m_tree.path("run").c_str(), 1);
        ::setenv("XDG_DATA_DIRS", (m_tree.makeDirectory("share") + ":/usr/share").c_str(), 1);
        m_tree.makeFile("ready.png", previewFiles::image("png", {64, 32}));
    }

    ~Thumbnailing() override {
        ::unsetenv("XDG_RUNTIME_DIR");
        ::unsetenv("XDG_DATA_DIRS");
    }

    void install(const std::string& script) {
        m_program = m_tree.makeFile("film thumbnailer", "#!/bin/sh\n" + script, 0755);
        m_tree.makeFile("share/thumbnailers/film.thumbnailer",
                        "[Thumbnailer Entry]\nTryExec=/bin/sh\nExec=\"" + m_program +
                            "\" -s %s %u %i %o 100%%\nMimeType=video/mp4;video/x-matroska;\n");
    }

    QImage imageOf(const std::string& path, std::chrono::milliseconds limit = 10s) {
        const PreviewMaker maker(limit);
        const OpenedItem item(path);
        const PreviewSubject subject{.path = path, .name = "film.mp4"};
        return maker.imageOf(subject, item, typeOf(subject, item, m_stop), {.bound = {150, 150}}, m_stop)
            .image;
    }

    std::string said(const std::string& file) const { return readFile(m_tree.path(file)); }

    ScratchTree m_tree;
    WorkStop m_stop;
    std::string m_program;
};

TEST_F(Thumbnailing, TheProgramGetsBytesAndAPrivatePlaceOfWhichNothingStays) {
    install("cd '" + m_tree.root() + R"('
        for each in "$@"; do printf '%s\n' "$each"; done >arguments
        env >environment
        mkdir -p "$XDG_CACHE_HOME/thumbnails/normal" && touch "$XDG_CACHE_HOME/thumbnails/normal/trace"
        cp ready.png "$5"
    )");
    const std::string path = m_tree.makeFile("a \xff$(touch bad);\"'.mp4", "film");
    EXPECT_EQ(imageOf(path).size(), QSize(64, 32));
    const std::string arguments = said("arguments");
    EXPECT_EQ(arguments.find("-s\n150\nfile:///"), 0U) << arguments;
    EXPECT_NE(arguments.find("\n" + path + "\n"), std::string::npos) << "byte for byte";
    EXPECT_NE(arguments.find("%FF"), std::string::npos) << "as a URI";
    EXPECT_NE(arguments.find("\n100%\n"), std::string::npos);
    const std::string privatePlace = m_tree.path("run/veilkeep-preview-");
    for (const char* variable : {"HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "TMPDIR"})
        EXPECT_NE(("\n" + said("environment")).find("\n" + std::string(variable) + "=" + privatePlace),
                  std::string::npos)
            << variable;
    EXPECT_EQ(namesIn(m_tree.path("run")).size(), 0U);
    EXPECT_FALSE(exists(m_tree.home() + "/.cache/thumbnails"));
    EXPECT_FALSE(exists(m_tree.path("bad")));
}

TEST_F(Thumbnailing, TheImageIsForNobodyElse) {
    install("cd '" + m_tree.root() + R"('
        stat -c '%a' "$5" "${5%/*}" >modes
        cat ready.png >"$5"
    )");
    EXPECT_FALSE(imageOf(m_tree.makeFile("a.mp4", "film")).isNull());
    EXPECT_EQ(said("modes"), "600\n700\n");
}

TEST_F(Thumbnailing, WhatFailsOrLiesGivesNone) {
    const std::string film = m_tree.makeFile("a.mp4", "film");
    for (const char* script : {"exit 1", "echo rubbish >\"$5\"", "rm \"$5\"", "rm \"$5\"; mkfifo \"$5\"",
                               "rm \"$5\"; ln -s /dev/zero \"$5\"", "kill -9 $$"}) {
        SCOPED_TRACE(script);
        install(script);
        EXPECT_TRUE(imageOf(film).isNull());
        EXPECT_EQ(namesIn(m_tree.path("run")).size(), 0U);
    }
}

TEST_F(Thumbnailing, ASlowProgramIsKilledWithItsChildren) {
    install("cd '" + m_tree.root() + R"('
        tail -f /dev/null & echo $! >child
        tail -f /dev/null
    )");
    const std::string film = m_tree.makeFile("a.mp4", "film");
    EXPECT_TRUE(imageOf(film, 300ms).isNull());
    const pid_t child = std::stoi(said("child"));
    EXPECT_TRUE(waitUntil([&] { return ::kill(child, 0) != 0; }));
    EXPECT_EQ(namesIn(m_tree.path("run")).size(), 0U);
}

TEST_F(Thumbnailing, AStopKillsItAtOnce) {
    install("cd '" + m_tree.root() + "'; echo $$ >child.new; mv child.new child; exec tail -f /dev/null");
    const std::string film = m_tree.makeFile("a.mp4", "film");
    std::thread stopper([&] {
        waitUntil([&] { return exists(m_tree.path("child")); });
        m_stop.stop();
    });
    EXPECT_TRUE(imageOf(film, 1min).isNull());
    stopper.join();
    EXPECT_NE(::kill(std::stoi(said("child")), 0), 0);
}

TEST_F(Thumbnailing, ItDoesNotOutliveAProgramThatIsKilledAndNothingOfItStays) {
    install("cd '" + m_tree.root() + "'; echo $$ >child.new; mv child.new child; exec tail -f /dev/null");
    const std::string film = m_tree.makeFile("a.mp4", "film");
    const pid_t program = ::fork();
    if (program == 0) {
        imageOf(film, 1min);
        ::_exit(0);
    }
    EXPECT_TRUE(waitUntil([&] { return exists(m_tree.path("child")); }));
    ::kill(program, SIGKILL);
    ::waitpid(program, nullptr, 0);
    const pid_t child = std::stoi(said("child"));
    EXPECT_TRUE(waitUntil([&] { return ::kill(child, 0) != 0; }));
    EXPECT_EQ(namesIn(m_tree.path("run")).size(), 1U);
    install("exit 1");
    EXPECT_TRUE(imageOf(film).isNull());
    EXPECT_EQ(namesIn(m_tree.path("run")).size(), 0U) << "the next run takes away what was left";
}

TEST(ThumbnailerFiles, AreReadAsTheyAreMeant) {
    struct Row {
        const char* text;
        bool isUsable;
        std::vector<std::string> arguments;
    };
    for (const Row& row : {
             Row{"[Thumbnailer Entry]\nExec=/bin/sh %i %o\n", true, {"/a b", "/out"}},
             Row{"[Thumbnailer Entry]\nExec=sh -x\n", true, {"-x"}},
             Row{"# c\n[Other]\nExec=rm\n[Thumbnailer Entry]\n Exec = sh '%i' \"a\\\"b c\" d\\ e\n",
                 true,
                 {"/a b", "a\"b c", "d e"}},
             Row{"[Thumbnailer Entry]\nExec=sh %u=%s%% %x %\n", true, {"file:///a%20b=9%", "", "%"}},
             Row{"[Thumbnailer Entry]\nTryExec=no-such-program\nExec=sh\n", false, {}},
             Row{"[Thumbnailer Entry]\nExec=no-such-program\n", false, {}},
             Row{"[Thumbnailer Entry]\nExec=sh 'open\n", false, {}},
             Row{"[Thumbnailer Entry]\nExec=\n", false, {}},
             Row{"Exec=sh\n", false, {}},
             Row{"", false, {}},
         }) {
        SCOPED_TRACE(row.text);
        const auto thumbnailer = thumbnailerFrom(row.text);
        ASSERT_EQ(thumbnailer.has_value(), row.isUsable);
        if (!thumbnailer)
            continue;
        EXPECT_EQ(thumbnailerArguments(*thumbnailer, "/a b", "/out", 9), row.arguments);
    }
}

} // namespace
} // namespace veilkeep
