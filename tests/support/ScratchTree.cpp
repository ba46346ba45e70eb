#include "tests/support/ScratchTree.h"

#include "core/base/PathText.h"
#include "core/base/UniqueFd.h"
#include "tests/support/RunProgram.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace veilkeep::test {
namespace {

[[noreturn]] void fail(const std::string& what, const std::string& path) {
    throw std::system_error(errno, std::generic_category(), what + " " + path);
}

bool everybodyMayEnter(std::string directory) {
    for (;; directory = parentPath(directory)) {
        struct stat status = {};
        if (::stat(directory.c_str(), &status) != 0 || !(status.st_mode & S_IXOTH))
            return false;
        if (directory == "/")
            return true;
    }
}

bool isProtectedPlace(std::string_view path) {
    for (const std::string_view tree : {"/tmp", "/var", "/usr", "/opt", "/run", "/dev", "/etc", "/boot"})
        if (isSameOrBelow(path, tree))
            return true;
    return false;
}

// The build tree where the rules allow it, else /srv.
std::string placeForScratchTrees() {
    const std::string inBuildTree = VEILKEEP_TEST_SCRATCH;
    std::filesystem::create_directories(inBuildTree);
    return isProtectedPlace(inBuildTree) || !everybodyMayEnter(inBuildTree) ? "/srv" : inBuildTree;
}

void setEnvironment(const std::string& home) {
    ::setenv("HOME", home.c_str(), 1);
    ::setenv("XDG_DATA_HOME", (home + "/.local/share").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (home + "/.config").c_str(), 1);
    ::setenv("XDG_STATE_HOME", (home + "/.local/state").c_str(), 1);
    ::setenv("XDG_CACHE_HOME", (home + "/.cache").c_str(), 1);
    ::setenv("XDG_RUNTIME_DIR", (home + "/runtime").c_str(), 1);
    ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
    ::unsetenv("PKEXEC_UID");
}

} // namespace

ScratchTree::ScratchTree() {
    m_root = placeForScratchTrees() + "/veilkeep-test-XXXXXX";
    if (!::mkdtemp(m_root.data()))
        fail("mkdtemp", m_root);
    if (::chmod(m_root.c_str(), 0755) != 0)
        fail("chmod", m_root);
    makeDirectory("home/runtime", 0700);
    setEnvironment(home());
}

// With programs that cope with trees deeper than a path may be long. What cannot be removed stays: no reason
// to fail a test.
ScratchTree::~ScratchTree() {
    runProgram({"/bin/chmod", "-R", "u+rwX", "--", m_root});
    runProgram({"/bin/rm", "-rf", "--", m_root});
}

std::string ScratchTree::path(std::string_view relative) const {
    return joinPath(m_root, relative);
}

std::string ScratchTree::makeDirectory(std::string_view relative, unsigned int mode) const {
    const std::string directory = path(relative);
    std::filesystem::create_directories(directory);
    if (::chmod(directory.c_str(), mode) != 0)
        fail("chmod", directory);
    return directory;
}

std::string ScratchTree::makeFile(std::string_view relative, std::string_view content,
                                  unsigned int mode) const {
    const std::string file = path(relative);
    std::filesystem::create_directories(std::string(parentPath(file)));
    writeFile(file, content);
    if (::chmod(file.c_str(), mode) != 0)
        fail("chmod", file);
    return file;
}

bool exists(const std::string& path) {
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0;
}

unsigned int modeOf(const std::string& path) {
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

std::set<std::string> namesIn(const std::string& directory) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory))
        names.insert(entry.path().filename());
    return names;
}

std::string readFile(const std::string& path) {
    const UniqueFd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!fd)
        fail("open", path);
    std::string content;
    char buffer[65536];
    ssize_t count = 0;
    while ((count = ::read(fd.get(), buffer, sizeof buffer)) > 0)
        content.append(buffer, static_cast<std::size_t>(count));
    if (count < 0)
        fail("read", path);
    return content;
}

void writeFile(const std::string& path, std::string_view content) {
    const UniqueFd fd(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
    if (!fd)
        fail("open", path);
    while (!content.empty()) {
        const ssize_t count = ::write(fd.get(), content.data(), content.size());
        if (count < 0)
            fail("write", path);
        content.remove_prefix(static_cast<std::size_t>(count));
    }
}

} // namespace veilkeep::test
