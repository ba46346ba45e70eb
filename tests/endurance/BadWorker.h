#pragma once

#include "tests/support/ScratchTree.h"

#include <filesystem>
#include <iterator>
#include <string>
#include <utility>

namespace veilkeep::test {

// The path of a worker that is the real one, and for a while one that meets with an accident.
class BadWorker {
public:
    BadWorker(const ScratchTree& tree, std::string real)
        : m_path(tree.path("worker")), m_real(std::move(real)), m_tree(tree) {
        goWell();
    }

    const std::string& path() const { return m_path; }

    static std::size_t kinds() { return std::size(all); }
    std::string goBad(std::size_t kind) { // what befalls it, in words
        std::filesystem::remove(m_path);
        const Kind& bad = all[kind];
        m_tree.makeFile("worker", "#!/bin/sh\nREAL='" + m_real + "'\n" + bad.script + "\n", bad.mode);
        return bad.what;
    }
    void goWell() {
        std::filesystem::remove(m_path);
        std::filesystem::create_symlink(m_real, m_path);
    }

private:
    struct Kind {
        const char* what;
        const char* script; // $REAL is the real worker
        unsigned int mode;
    };

    static constexpr Kind all[] = {
        {"is killed before its work", "kill -KILL $$", 0755},
        {"is killed after its work", "\"$REAL\" \"$@\" >/dev/null; kill -KILL $$", 0755},
        {"is killed within its work", "\"$REAL\" \"$@\" & kill -KILL $!; wait", 0755},
        {"prints rubbish", "printf '\\0\\377x\\n'; exit 7", 0755},
        {"prints rubbish after its work", "\"$REAL\" \"$@\" >/dev/null; head -c 100000 /dev/urandom", 0755},
        {"floods its reader", "head -c 3000000 /dev/zero; exec \"$REAL\" \"$@\"", 0755},
        {"names a place where nothing is", "echo 'NewFilename: /nowhere/a'", 0755},
        {"tells of an error after its work", "\"$REAL\" \"$@\" >/dev/null; echo 'Error: 1'", 0755},
        {"lacks the rights", "echo 'Error: 3'", 0755},
        {"says nothing", "exit 0", 0755},
        {"says nothing of its work", "exec \"$REAL\" \"$@\" >/dev/null", 0755},
        {"cannot be started", "exit 0", 0644},
        // Until it is ended, in 20 seconds.
        {"stops once it has closed its output", "exec >&-; kill -STOP $$", 0755},
    };

    const std::string m_path;
    const std::string m_real;
    const ScratchTree& m_tree;
};

} // namespace veilkeep::test
