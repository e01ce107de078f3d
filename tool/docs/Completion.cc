#include "tool/docs/Completion.hh"

#include "tool/console/Text.hh"

namespace {

/// Returns a text in single quotes of a shell, with a backslash before each character of `special`.
std::string shellQuoted(const std::string &text, const std::string &special = "") {
    std::string quoted = "'";
    for (const char c : text) {
        // unreached: no text of the program has one of them
        if (special.find(c) != std::string::npos)
            quoted += '\\';
        quoted += c == '\'' ? "'\\''" : std::string(1, c);
    }
    return quoted + "'";
}

std::vector<std::string> namesOf(const std::vector<OptionTexts> &options) {
    std::vector<std::string> names;
    for (const OptionTexts &option : options)
        names.insert(names.end(), option.names.begin(), option.names.end());
    return names;
}

/// The options of a command: its own and those that all commands have.
std::vector<OptionTexts> optionsOf(const CommandTexts &command, const CommandTexts &program) {
    std::vector<OptionTexts> options = command.options;
    const std::vector<OptionTexts> common = commonOptions(program);
    options.insert(options.end(), common.begin(), common.end());
    return options;
}

std::vector<std::string> commandNames(const std::vector<CommandTexts> &all) {
    std::vector<std::string> names;
    names.reserve(all.size());
    for (const CommandTexts &command : all)
        names.push_back(command.name);
    return names;
}

/// The known values of the operands; if there are none, operands are files.
std::vector<std::string> operandValues(const CommandTexts &command) {
    std::vector<std::string> values;
    for (const OptionTexts &operand : command.operands)
        values.insert(values.end(), operand.values.begin(), operand.values.end());
    return values;
}

/// Returns the options and operands of a command as a case of the script for bash.
std::string bashCase(const std::string &command, const std::vector<OptionTexts> &options,
                     const std::vector<std::string> &operands) {
    std::string script = "        " + command + ")\n";
    script += "            options=" + shellQuoted(joined(namesOf(options), " ")) + "\n";
    if (!operands.empty())
        script += "            operands=" + shellQuoted(joined(operands, " ")) + "\n";
    script += "            case $previous in\n";
    for (const OptionTexts &option : options)
        if (!option.argument.empty())
            script += "                " + option.names.back() + ")\n                    COMPREPLY=(" +
                      (option.values.empty()
                           ? std::string()
                           : "$(compgen -W " + shellQuoted(joined(option.values, " ")) + " -- \"$current\")") +
                      ")\n                    return\n                    ;;\n";
    return script + "            esac\n            ;;\n";
}

/// Returns an option in the form that _arguments of zsh expects.
std::string zshArgument(const OptionTexts &option) {
    std::vector<std::string> names = option.names;
    std::string argument = "[" + option.purpose + "]";
    if (!option.argument.empty()) {
        for (std::string &name : names)
            name += '=';
        argument += ":" + option.argument + ":" + (option.values.empty() ? "" : "(" + joined(option.values, " ") + ")");
    }
    const std::string exclusive = "(" + joined(option.names, " ") + ")";
    return (names.size() == 1 ? names.front() : shellQuoted(exclusive) + "{" + joined(names, ",") + "}") +
           shellQuoted(argument);
}

/// Returns an operand in the same form.
std::string zshOperand(const OptionTexts &operand) {
    const std::string position = operand.repeated ? "*:" : operand.required ? ":" : "::";
    const std::string words = operand.isFile() ? "_files" : "(" + joined(operand.values, " ") + ")";
    return shellQuoted(position + operand.names.front() + ":" + words);
}

} // namespace

std::string bashCompletion(const ProgramTexts &all) {
    std::string script = R"(# Completes the command line of rtifed in bash.
_rtifed() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command= options= operands= word
    # bash makes words of their own of "=" and what follows it
    [[ $current == = ]] && current=
    [[ $previous == = ]] && previous=${COMP_WORDS[COMP_CWORD - 2]}
    for word in "${COMP_WORDS[@]:1:COMP_CWORD - 1}"; do
        case $word in
            )" + joined(commandNames(all.commands), " | ") +
                         R"X()
                command=$word
                break
                ;;
        esac
    done
    case $command in
)X";
    script += bashCase("''", all.program.options, commandNames(all.commands));
    for (const CommandTexts &command : all.commands)
        script += bashCase(command.name, optionsOf(command, all.program), operandValues(command));
    return script + R"X(    esac
    if [[ $current == -* ]]; then
        COMPREPLY=($(compgen -W "$options" -- "$current"))
    elif [[ $operands ]]; then
        COMPREPLY=($(compgen -W "$operands" -- "$current"))
    else
        local IFS=$'\n'
        COMPREPLY=($(compgen -f -- "$current"))
        compopt -o filenames 2>/dev/null
    fi
}
complete -F _rtifed rtifed
)X";
}

std::string zshCompletion(const ProgramTexts &all) {
    std::string script = "#compdef rtifed\n"
                         "# Completes the command line of rtifed in zsh.\n"
                         "_rtifed() {\n"
                         "    local curcontext=\"$curcontext\" state line\n"
                         "    local -a commands\n"
                         "    commands=(\n";
    for (const CommandTexts &command : all.commands)
        script += "        " + shellQuoted(command.name + ":" + command.purpose) + "\n";
    script += "    )\n    _arguments -C";
    for (const OptionTexts &option : all.program.options)
        script += " \\\n        " + zshArgument(option);
    script += " \\\n        '1:command:->command' '*::argument:->argument'\n"
              "    case $state in\n"
              "        command) _describe command commands ;;\n"
              "        argument)\n"
              "            case $line[1] in\n";
    for (const CommandTexts &command : all.commands) {
        script += "                " + command.name + ")\n                    _arguments";
        for (const OptionTexts &option : optionsOf(command, all.program))
            script += " \\\n                        " + zshArgument(option);
        for (const OptionTexts &operand : command.operands) {
            script += " \\\n                        " + zshOperand(operand);
            if (operand.repeated) // zsh cannot know where the next operand begins
                break;
        }
        script += "\n                    ;;\n";
    }
    return script + "            esac\n"
                    "            ;;\n"
                    "    esac\n"
                    "}\n"
                    "_rtifed \"$@\"\n";
}

std::string fishCompletion(const ProgramTexts &all) {
    std::string script = "# Completes the command line of rtifed in fish.\n";
    const auto add = [&script](const std::string &condition, const OptionTexts &option) {
        script += "complete -c rtifed -n " + shellQuoted(condition, "\\");
        for (const std::string &name : option.names)
            script += beginsWith(name, "--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
        if (!option.argument.empty())
            script += option.values.empty() ? " -x" : " -x -a " + shellQuoted(joined(option.values, " "), "\\");
        script += " -d " + shellQuoted(option.purpose, "\\") + "\n";
    };
    for (const OptionTexts &option : all.program.options)
        add("__fish_use_subcommand", option);
    for (const CommandTexts &command : all.commands) {
        script += "complete -c rtifed -f -n __fish_use_subcommand -a " + command.name + " -d " +
                  shellQuoted(command.purpose, "\\") + "\n";
        const std::string here = "__fish_seen_subcommand_from " + command.name;
        for (const OptionTexts &option : optionsOf(command, all.program))
            add(here, option);
        const std::vector<std::string> operands = operandValues(command);
        if (!operands.empty())
            script += "complete -c rtifed -f -n " + shellQuoted(here) + " -a " +
                      shellQuoted(joined(operands, " "), "\\") + "\n";
    }
    return script;
}
