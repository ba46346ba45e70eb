#include "tests/endurance/BadWorker.h"

#include <filesystem>
#include <iterator>
#include <utility>

namespace veilkeep::test {
namespace {

struct Kind {
    const char* what;
    const char* script; // $REAL is the real worker
    unsigned int mode = 0755;
};

constexpr Kind all[] = {
    {"is killed before its work", "kill -KILL $$"},
    {"is killed after its work", "\"$REAL\" \"$@\" >/dev/null; kill -KILL $$"},
    {"is killed within its work", "\"$REAL\" \"$@\" & kill -KILL $!; wait"},
    {"prints rubbish", "printf '\\0\\377x\\n'; exit 7"},
    {"prints rubbish after its work", "\"$REAL\" \"$@\" >/dev/null; head -c 100000 /dev/urandom"},
    {"floods its reader", "head -c 3000000 /dev/zero; exec \"$REAL\" \"$@\""},
    {"names a place where nothing is", "echo 'NewFilename: /nowhere/a'"},
    {"tells of an error after its work", "\"$REAL\" \"$@\" >/dev/null; echo 'Error: 1'"},
    {"lacks the rights", "echo 'Error: 3'"},
    {"says nothing", "exit 0"},
    {"says nothing of its work", "exec \"$REAL\" \"$@\" >/dev/null"},
    {"cannot be started", "exit 0", 0644},
    {"stops once it has closed its output", "exec >&-; kill -STOP $$"}, // until it is ended, in 20 seconds
};

} // namespace

BadWorker::BadWorker(const ScratchTree& tree, std::string real)
    : m_path(tree.path("worker")), m_real(std::move(real)), m_tree(tree) {
    goWell();
}

std::size_t BadWorker::kinds() {
    return std::size(all);
}

std::string BadWorker::goBad(std::size_t kind) {
    std::filesystem::remove(m_path);
    const Kind& bad = all[kind];
    m_tree.makeFile("worker", "#!/bin/sh\nREAL='" + m_real + "'\n" + bad.script + "\n", bad.mode);
    return bad.what;
}

void BadWorker::goWell() {
    std::filesystem::remove(m_path);
    std::filesystem::create_symlink(m_real, m_path);
}

} // namespace veilkeep::test
