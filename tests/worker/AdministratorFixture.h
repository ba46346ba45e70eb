#pragma once

#include "core/base/UniqueFd.h"
#include "tests/worker/WorkerFixture.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace veilkeep::test {

// Runs the real cloakWorker as pkexec would, for the user "ordinaryUser".
class AdministratorFixture : public WorkerFixture {
protected:
    void SetUp() override {
        if (!isRoot())
            GTEST_SKIP() << "needs root";
    }

    std::string requestFor(const std::string& path) const { return path + '\0' + m_inProgressFolder + '\0'; }

    ProgramRun runAsAdministrator(
        const std::vector<std::string>& arguments, const std::string& input,
        const std::function<void()>& inChild = [] {}) const {
        const std::string request = m_tree.makeFile("request", input);
        return runProgram(arguments, {0, "/", [&] {
                                          ::setenv("PKEXEC_UID", std::to_string(ordinaryUser).c_str(), 1);
                                          ::dup2(::open(request.c_str(), O_RDONLY | O_CLOEXEC), STDIN_FILENO);
                                          inChild();
                                      }});
    }

    ProgramRun administrate(
        const std::string& operation, const std::string& path,
        const std::function<void()>& inChild = [] {}) const {
        return runAsAdministrator({bundledProgram("cloakWorker"), "-p", "-i", operation, "-"},
                                  requestFor(path), inChild);
    }

    static void give(const std::string& path, unsigned int owner, unsigned int mode) {
        ASSERT_EQ(::lchown(path.c_str(), owner, owner), 0);
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
    }

    std::string m_inProgressFolder = m_tree.path("of user/InProgress");
};

} // namespace veilkeep::test
