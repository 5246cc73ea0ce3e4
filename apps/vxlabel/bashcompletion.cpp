// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/bashcompletion.h"

#include "apps/vxlabel/commandtree.h"

#include <CLI/CLI.hpp>

#include <map>
#include <string>

namespace {

/// The part that is the same for all commands. A kind is what a value can be: "files", "files ENDING...",
/// "folders", "words WORD...", "nothing" that could be completed, or empty if there is no value.
constexpr auto frame = R"SH(
# Offers the values of kind $1 that begin with $word.
_vxlabel_offer()
{
    local kind endings path typed
    read -ra endings <<<"$1"
    kind=${endings[0]}
    endings=("${endings[@]:1}")
    # As the word is meant, not as it is typed: with quotes, or backslashes before blanks.
    # shellcheck disable=SC2162
    IFS= read typed <<<"$word"
    [[ $word != [\"\']* ]] || typed=${word:1}
    case $kind in
        words) mapfile -t COMPREPLY < <(compgen -W "${endings[*]}" -- "$typed") ;;
        folders)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -d -- "$typed")
            ;;
        files)
            compopt -o filenames 2>/dev/null
            while IFS= read -r path; do
                if ((${#endings[@]} == 0)) || [[ -d ${path/#\~/$HOME} || " ${endings[*]} " == *" ${path##*.} "* ]]; then
                    COMPREPLY+=("$path")
                fi
            done < <(compgen -f -- "$typed")
            ;;
    esac
}

_vxlabel()
{
    local word=${COMP_WORDS[COMP_CWORD]} command='' kind='' ended='' place=0 given i
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; ++i)); do
        given=${COMP_WORDS[i]}
        # Bash takes "--name=value" and "name:value" apart.
        if [[ $given == = && $kind ]]; then
            :
        elif [[ $given == [:=]* ]]; then
            kind=files
        elif [[ $kind ]]; then
            kind=
        elif [[ ! $ended && $given == -- ]]; then
            ended=yes
        elif [[ ! $ended && $given == -* ]]; then
            kind=$(_vxlabel_value "$command" "$given")
        elif [[ ! $command ]]; then
            command=$given
        else
            ((++place))
        fi
    done

    case $word in
        = | :)
            word=
            kind=${kind:-files}
            ;;
    esac
    if [[ $kind ]]; then
        _vxlabel_offer "$kind"
    elif [[ ! $ended && $word == -* ]]; then
        _vxlabel_offer "words $(_vxlabel_options "$command")"
    elif [[ ! $command ]]; then
        _vxlabel_offer "words $(_vxlabel_commands)"
    else
        _vxlabel_offer "$(_vxlabel_place "$command" "$place")"
    fi
}

complete -F _vxlabel vxlabel
)SH";

/// What can stand for a value whose name in the help is this. Other names are those of values that only
/// people know.
std::string kindOf(const std::string &name)
{
    static const std::map<std::string, std::string> kinds { { "LABEL", "files vxl vxb" },
        { "TARGET", "files vxl vxb" }, { "MANIFEST", "files jsonl" }, { "FILE", "files" },
        { "SOURCE", "files" }, { "PATTERN", "files" }, { "DIR", "folders" } };
    const auto found = kinds.find(name);
    return found == kinds.end() ? "nothing" : found->second;
}

std::string kindOf(const CLI::Option &option, const std::string &name)
{
    const std::vector<std::string> values = CommandTree::valuesOf(option);
    return values.empty() ? kindOf(name) : "words " + CLI::detail::join(values, " ");
}

/// A function of the shell that prints what belongs to its arguments.
std::string function(const std::string &name, const std::string &subject, const std::string &cases)
{
    return '\n' + name + "()\n{\n    case " + subject + " in\n" + cases + "    esac\n}\n";
}

std::string caseOf(const std::string &patterns, const std::string &printed)
{
    return "        " + patterns + ") echo '" + printed + "' ;;\n";
}

std::string namesOf(const std::vector<const CLI::App *> &commands)
{
    std::string names;
    for (const CLI::App *command : commands)
        names += (names.empty() ? "" : " ") + command->get_name();
    return names;
}

/// The long names, and the short ones of options that have no long one.
void addOptions(QStringList &names, const CLI::App &command)
{
    for (const CLI::Option *option : CommandTree::optionsOf(command))
        names.append(QString::fromStdString(CommandTree::namesOf(*option).back()));
}

/// The options that can stand behind a command.
std::string optionsOf(const CLI::App &command, const CLI::App &program)
{
    QStringList names;
    addOptions(names, command);
    addOptions(names, program);
    names.removeDuplicates();
    return names.join(u' ').toStdString();
}

/// The cases for the values of the options of a command; "" or '*' stand for the program itself.
std::string valueCases(const CLI::App &command, const std::string &name)
{
    std::string cases;
    for (const CLI::Option *option : CommandTree::optionsOf(command)) {
        if (!CommandTree::takesValue(*option))
            continue;
        std::vector<std::string> patterns;
        for (const std::string &spelling : CommandTree::namesOf(*option))
            patterns.emplace_back(name).append(":").append(spelling);
        cases += caseOf(CLI::detail::join(patterns, " | "), kindOf(*option, CommandTree::valueName(*option)));
    }
    return cases;
}

std::string placeCases(const CLI::App &command)
{
    std::string cases;
    int place = 0;
    for (const CLI::Option *option : CommandTree::placesOf(command)) {
        const bool isList = option->get_expected_max() >= CLI::detail::expected_max_vector_size;
        const std::string pattern = command.get_name() + ':' + (isList ? "*" : std::to_string(place++));
        cases += caseOf(pattern, kindOf(*option, option->get_name(true, false)));
    }
    return cases;
}

} // namespace

QByteArray bashCompletion(const CLI::App &program)
{
    const std::vector<const CLI::App *> commands = CommandTree::commandsOf(program);
    std::string options;
    std::string values = valueCases(program, "*");
    std::string places;
    for (const CLI::App *command : commands) {
        options += caseOf(command->get_name(), optionsOf(*command, program));
        values += valueCases(*command, command->get_name());
        places += placeCases(*command);
    }
    options += caseOf("*", optionsOf(program, program));
    const std::string script
        = "# Completes the arguments of vxlabel in bash; made by \"vxlabel completion bash\".\n"
          "\n_vxlabel_commands()\n{\n    echo '"
        + namesOf(commands) + "'\n}\n" + function("_vxlabel_options", "$1", options)
        + function("_vxlabel_value", "$1:$2", values) + function("_vxlabel_place", "$1:$2", places) + frame;
    return QByteArray::fromStdString(script);
}
