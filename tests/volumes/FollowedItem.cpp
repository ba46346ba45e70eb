#include "tests/volumes/FollowedItem.h"

#include "core/base/PathText.h"
#include "core/names/HiddenName.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string_view>

namespace veilkeep::test {
namespace {

using Outcome = AliasResolver::Answer::Outcome;

std::string moveByWorker(const std::string& operation, const std::string& path) {
    const ProgramRun run = runProgram({bundledProgram("cloakWorker"), "-p", "-i", operation, path});
    constexpr std::string_view mark = "NewFilename: ";
    EXPECT_TRUE(run.output.starts_with(mark)) << operation << " " << path << ": " << run.output;
    return run.output.starts_with(mark) ? run.output.substr(mark.size()) : std::string();
}

} // namespace

std::string hide(const std::string& path) {
    return moveByWorker("-hide", path);
}

std::string unhide(const std::string& path) {
    return moveByWorker("-unhide", path);
}

AliasResolver::Answer whereIs(const File& file) {
    AliasResolver resolver(AliasResolver::Reach::WholeVolume);
    return resolver.resolve(file.alias().value_or(""), AliasResolver::Mounting::Never);
}

void expectFound(const File& file, const std::string& path, const std::string& when) {
    const auto answer = whereIs(file);
    EXPECT_EQ(answer.outcome, Outcome::Found) << when << ": " << path;
    EXPECT_EQ(answer.path, path) << when;
    File followed = file;
    AliasResolver resolver(AliasResolver::Reach::WholeVolume);
    EXPECT_TRUE(followed.checkPathesConsistency(resolver)) << when << ": " << path;
    EXPECT_EQ(followed.path(), path) << when;
    const bool isHidden = path.find(hiddenDirectoryName) != std::string::npos;
    EXPECT_EQ(followed.state(), isHidden ? File::Hidden : File::Visible) << when << ": " << path;
}

void expectNotFound(const File& file, Outcome outcome, const std::string& when) {
    const auto answer = whereIs(file);
    EXPECT_EQ(answer.outcome, outcome) << when << ": " << answer.path;
    EXPECT_EQ(answer.path, file.path()) << when << ": the last known path";
}

void move(const std::string& from, const std::string& to) {
    std::filesystem::create_directories(std::string(parentPath(to)));
    std::filesystem::rename(from, to);
}

File makeItem(const std::string& path, const std::string& content) {
    std::filesystem::create_directories(std::string(parentPath(path)));
    writeFile(path, content);
    return File::initWithPath(path);
}

} // namespace veilkeep::test
