#include "ctl/CommandLine.h"

#include "ctl/GroupWords.h"
#include "ctl/PasswordCommand.h"
#include "format/PrintableName.h"
#include "requests/RequestRules.h"

#include <string_view>
#include <utility>

namespace veilkeep {
namespace {

bool isOption(std::string_view argument) {
    return argument.size() > 1 && argument.starts_with('-');
}

// Goes through the arguments one by one; `mistake` is set at the first that makes no sense.
class Parser {
public:
    explicit Parser(std::span<char* const> arguments) : m_arguments(arguments) {}

    void parse() {
        while (mistake.empty() && m_next < m_arguments.size()) {
            const std::string_view argument = m_arguments[m_next++];
            if (m_optionsEnded || !isOption(argument))
                takeWord(argument);
            else
                takeOption(argument);
        }
        if (mistake.empty() && !line.wantsHelp && !line.wantsVersion)
            checkWhole();
    }

    CommandLine line;
    std::string mistake;

private:
    void takeWord(std::string_view argument) {
        if (line.command)
            line.paths.emplace_back(argument);
        else if (line.command = commandNamed(argument); !line.command)
            mistake = "unknown command " + quotedName(argument);
    }

    void takeOption(std::string_view argument) {
        if (argument == "--") {
            m_optionsEnded = true;
            return;
        }
        line.wantsHelp |= argument == "--help";
        line.wantsVersion |= argument == "--version";
        if (argument == "--help" || argument == "--version")
            return;
        const std::string_view name = argument.substr(0, argument.find('='));
        for (const OptionSyntax& option : optionTable())
            if (name == option.longName || (option.shortName && argument == option.shortName))
                return take(option, name, argument);
        mistake = "unknown option " + quotedName(argument);
    }

    void take(const OptionSyntax& option, std::string_view name, std::string_view argument) {
        m_options |= option.option;
        std::string value;
        const bool hasValue = name.size() < argument.size();
        if (hasValue && option.value)
            value = argument.substr(name.size() + 1);
        else if (option.value && m_next < m_arguments.size())
            value = m_arguments[m_next++];
        else if (hasValue || option.value)
            mistake = "option " + quotedName(name) + (option.value ? " takes a value" : " takes no value");
        keep(option.option, value);
    }

    void keep(std::uint32_t option, const std::string& value) {
        line.endNamesWithNul |= option == commandOption::Null;
        line.json |= option == commandOption::Json;
        line.yes |= option == commandOption::Yes;
        line.dryRun |= option == commandOption::DryRun;
        line.staysOnVolume |= option == commandOption::OneFileSystem;
        line.passwordFromInput |= option == commandOption::PasswordStdin;
        if (option == commandOption::State)
            line.state = value;
        if (option == commandOption::Name)
            line.name = value;
        if (option == commandOption::Answer)
            line.answers.push_back(value);
        if (option == commandOption::Group)
            line.group = value;
        if (option == commandOption::To)
            line.copyTo = value;
        line.all |= option == commandOption::All;
        const bool isState = value == "hidden" || value == "visible" || value == "broken";
        if (mistake.empty() && option == commandOption::State && !isState)
            mistake = "unknown state " + quotedName(value);
    }

    void checkWhole() {
        if (!line.command) {
            mistake = "a command is missing";
            return;
        }
        for (const OptionSyntax& option : optionTable())
            if ((m_options & option.option) && !(optionsOf(*line.command) & option.option))
                mistake =
                    std::string("'") + line.command->name + "' takes no option '" + option.longName + "'";
        if (!mistake.empty() || isPasswordCommand())
            return;
        const RequestRule* const rule = requestRule(line.command->name);
        if (line.json && line.endNamesWithNul)
            mistake = "'--json' and '--null' do not go together";
        else if (rule && rule->command == RequestCommand::Group)
            takeGroupWords();
        else if (rule)
            checkPaths(*rule);
        else if (line.isRescue() && line.paths.empty())
            mistake = "a path is missing";
        else if (!line.isRescue() && !line.paths.empty()) // "watch", "doctor" and "uninstall" are no requests
            mistake = "'" + std::string(line.command->name) + "' takes no paths";
    }

    void takeGroupWords() {
        auto options = groupOptions(line.paths);
        line.paths.clear();
        if (auto* const told = std::get_if<std::string>(&options))
            mistake = std::move(*told);
        else
            line.groupOptions = std::get<QVariantMap>(std::move(options));
    }

    void checkPaths(const RequestRule& rule) {
        const int instead = rule.groupUse == GroupUse::InsteadOfPaths ? line.group.has_value() + line.all : 0;
        if (instead + !line.paths.empty() > 1)
            mistake = "paths, '--group' and '--all' exclude each other";
        else if (line.paths.size() < rule.leastPaths && instead == 0)
            mistake = "a path is missing";
        else if (line.paths.size() > rule.mostPaths)
            mistake = "too many paths for '" + std::string(line.command->name) + "'";
        else if (rule.groupUse == GroupUse::Needed && !line.group)
            mistake = "'" + std::string(line.command->name) + "' needs the option '--group'";
    }

    // Its words are no paths.
    bool isPasswordCommand() {
        if (!line.isPasswordCommand())
            return false;
        if (line.paths.size() != 1 || !PasswordCommand::isAction(line.paths.front()))
            mistake = "'password' is followed by 'set', 'change', 'off' or 'check'";
        return true;
    }

    const std::span<char* const> m_arguments;
    std::size_t m_next = 0;
    std::uint32_t m_options = 0;
    bool m_optionsEnded = false;
};

} // namespace

std::variant<CommandLine, std::string> CommandLine::parse(std::span<char* const> arguments) {
    Parser parser(arguments);
    parser.parse();
    if (!parser.mistake.empty())
        return std::move(parser.mistake);
    return std::move(parser.line);
}

} // namespace veilkeep
