#include "core/protocol/TrustedProgram.h"

#include "tests/support/PrivateMount.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <functional>

namespace veilkeep {
namespace {

constexpr const char* place = "/mnt"; // its own folders are as good as the system's
const std::string folder = "/mnt/lib/veilkeep";
const std::string worker = folder + "/cloakWorker";

// Everything is in order before the fault is made.
void layOut() {
    std::filesystem::remove_all("/mnt/lib");
    std::filesystem::create_directories(folder);
    test::writeFile(worker, "program");
    ASSERT_EQ(::chmod(worker.c_str(), 0755), 0);
}

void change(const std::string& path, unsigned int mode) {
    ASSERT_EQ(::chmod(path.c_str(), mode), 0);
}

void give(const std::string& path, uid_t user) {
    ASSERT_EQ(::chown(path.c_str(), user, 0), 0);
}

void replaceByLink(const std::string& path) {
    ASSERT_EQ(::rename(path.c_str(), (path + ".real").c_str()), 0);
    ASSERT_EQ(::symlink((path + ".real").c_str(), path.c_str()), 0);
}

TEST(TrustedProgram, IsRootsAloneUpToTheTop) {
    if (!test::isRoot())
        GTEST_SKIP() << "needs root to make programs that root owns";
    struct stat top = {};
    if (::stat("/", &top) != 0 || top.st_uid != 0 || (top.st_mode & 022) != 0)
        GTEST_SKIP() << "this system's / does not belong to root alone";
    const test::PrivateMount mount("none", place, "tmpfs", 0, "mode=755");
    if (!mount.whyMissing().empty())
        GTEST_SKIP() << mount.whyMissing();
    struct Row {
        const char* name;
        std::function<void()> makeFault;
        std::string path;      // what is asked for
        std::string operation; // of the error; none where it may run
        std::string culprit;
    };
    const char* const kind = "neither a file in its place nor a folder";
    const char* const others = "writable by others";
    const char* const plain = "not a plain absolute path";
    const Row rows[] = {
        {"all in order", [] {}, worker, "", ""},
        {"secret", [] { change(worker, 0700); }, worker, "", ""},
        {"file of a user", [] { give(worker, test::ordinaryUser); }, worker, "not owned by root", worker},
        {"folder of a user", [] { give(folder, 1000); }, worker, "not owned by root", folder},
        {"distant folder", [] { give("/mnt/lib", 1000); }, worker, "not owned by root", "/mnt/lib"},
        {"group may write", [] { change(worker, 0775); }, worker, others, worker},
        {"others may write", [] { change(worker, 0757); }, worker, others, worker},
        {"folder of a group", [] { change(folder, 0775); }, worker, others, folder},
        {"sticky folder", [] { change("/mnt/lib", 01777); }, worker, others, "/mnt/lib"},
        {"link to it", [] { replaceByLink(worker); }, worker, kind, worker},
        {"link on the way", [] { replaceByLink("/mnt/lib"); }, worker, kind, "/mnt/lib"},
        {"folder in its place", [] {}, folder, kind, folder},
        {"missing", [] {}, folder + "/none", "lstat", folder + "/none"},
        {"dots", [] {}, folder + "/../veilkeep/cloakWorker", plain, folder + "/../veilkeep/cloakWorker"},
        {"two slashes", [] {}, "/" + worker, plain, "/" + worker},
        {"relative", [] {}, "cloakWorker", plain, "cloakWorker"},
        {"nothing", [] {}, "", plain, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        layOut();
        row.makeFault();
        const Result<void> checked = checkTrustedProgram(row.path);
        ASSERT_EQ(checked.has_value(), row.operation.empty());
        if (!checked) {
            EXPECT_EQ(checked.error().operation, row.operation);
            EXPECT_EQ(checked.error().path, row.culprit);
        }
    }
}

} // namespace
} // namespace veilkeep
