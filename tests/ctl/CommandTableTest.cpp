#include "ctl/CommandTable.h"

#include "ctl/TerminalQuestions.h"
#include "requests/RequestRules.h"
#include "tests/support/RunInChild.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <sstream>

namespace veilkeep::test {
namespace {

std::string projectFile(const std::string& path) {
    return readFile(std::string(VEILKEEP_SOURCE) + "/" + path);
}

// Completions and the manual name all commands and options, and bash offers exactly those.
TEST(CommandTableTest, CompletionsAndManualKnowAllCommandsAndOptions) {
    const std::string fish = projectFile("resources/completions/fish");
    const std::string zsh = projectFile("resources/completions/zsh");
    const std::string manual = projectFile("docs/veilkeepctl.1");
    const auto bash = [](const std::string& words) {
        const ProgramRun run = runProgram(
            {"/bin/bash", "-c",
             "source \"$0\"; COMP_WORDS=(veilkeepctl " + words +
                 "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _veilkeepctl; printf '%s\\n' \"${COMPREPLY[@]}\"",
             std::string(VEILKEEP_SOURCE) + "/resources/completions/bash"});
        std::istringstream lines(run.output);
        return std::set<std::string>(std::istream_iterator<std::string>(lines), {});
    };
    std::set<std::string> names;
    for (const CommandSyntax& command : commandTable()) {
        const std::string name = command.name;
        names.insert(name);
        const std::set<std::string> noRequests = {"doctor", "password", "rescue", "uninstall", "watch"};
        EXPECT_NE(requestRule(command.name) != nullptr, noRequests.contains(name)) << name;
        EXPECT_NE(fish.find(" -a " + name + " "), std::string::npos) << name;
        EXPECT_NE(zsh.find("'" + name + ":"), std::string::npos) << name;
        EXPECT_NE(manual.find("\n.It Cm " + name), std::string::npos) << name;
        EXPECT_NE(helpText(command).find(command.details), std::string::npos) << name;
        std::set<std::string> options{"--help"};
        for (const OptionSyntax& option : optionTable())
            if (optionsOf(command) & option.option)
                options.insert(option.longName);
        EXPECT_EQ(bash(name + " --"), options) << name;
    }
    EXPECT_EQ(bash("''"), names);
    EXPECT_EQ(bash("password ''"), (std::set<std::string>{"set", "change", "off", "check"}));
    for (const OptionSyntax& option : optionTable()) {
        const std::string name = std::string(option.longName).substr(2);
        EXPECT_NE(fish.find(" -l " + name), std::string::npos) << name;
        EXPECT_NE(zsh.find("--" + name), std::string::npos) << name;
        EXPECT_NE(manual.find("\\-" + name), std::string::npos) << name;
    }
}

TEST(TerminalQuestionsTest, ButtonOfLine) {
    const Question question{"?", {}, {"Unhide", "Unhide Top Level", "Remove", "Cancel"}};
    const std::pair<const char*, std::optional<std::size_t>> rows[] = {
        {"", 0},           {" 2 ", 1},           {"0", std::nullopt},  {"5", std::nullopt},
        {"unhide top", 1}, {"un", std::nullopt}, {"-1", std::nullopt},
    };
    for (const auto& [line, button] : rows)
        EXPECT_EQ(buttonOfLine(question, line), button) << line;
}

TEST(TerminalQuestionsTest, AnAnswerGivenBeforehandCountsOnceForAnItem) {
    const Question question{"Try with rights?", {}, {"Try", "Cancel"}};
    const std::pair<std::vector<std::string>, bool> rows[] = {{{"try"}, false}, {{}, true}};
    for (const auto& [words, takesDefault] : rows)
        EXPECT_TRUE(runInChild([&, &words = words, takesDefault = takesDefault] {
            const int nowhere = ::open("/dev/null", O_RDWR | O_CLOEXEC);
            ::dup2(nowhere, STDIN_FILENO), ::dup2(nowhere, STDERR_FILENO);
            TerminalOutput output(false);
            TerminalQuestions questions(words, takesDefault, output);
            EXPECT_EQ(questions.ask(question), 0U);
            EXPECT_EQ(questions.ask(question), 1U);
            questions.goOn();
            EXPECT_EQ(questions.ask(question), 0U);
        }));
}

} // namespace
} // namespace veilkeep::test
