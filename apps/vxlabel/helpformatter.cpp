// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/helpformatter.h"

#include "apps/vxlabel/commandtree.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <regex>
#include <sstream>

namespace {

constexpr size_t lineWidth = 80;
constexpr size_t textColumn = 28;
constexpr auto ungrouped = "Options"; // the parser's own name for it

/// Blanks up to the column, or a new line with them where the text has come too far.
void goToColumn(std::string &text, size_t column)
{
    const size_t begin = text.rfind('\n') + 1;
    if (text.size() - begin + 2 > column) {
        text += '\n';
        text.append(column, ' ');
    } else {
        text.append(column - (text.size() - begin), ' ');
    }
}

/// Appends words to the last line, which go on below its column.
void appendWords(std::string &text, const std::string &words, size_t column)
{
    size_t used = text.size() - (text.rfind('\n') + 1);
    bool isFirst = true;
    std::istringstream stream(words);
    for (std::string word; stream >> word; isFirst = false) {
        if (!isFirst && used + 1 + word.size() > lineWidth) {
            text += '\n';
            text.append(column, ' ');
            used = column;
        } else if (!isFirst) {
            text += ' ';
            ++used;
        }
        text += word;
        used += word.size();
    }
}

std::string entry(const std::string &name, const std::string &description, size_t column = textColumn)
{
    std::string text = "  " + name;
    goToColumn(text, column);
    appendWords(text, description, column);
    return text + '\n';
}

std::string joined(const std::vector<std::string> &words)
{
    return CLI::detail::join(words, ", ");
}

/// "-o, --output FILE"
std::string leftSide(const CLI::Option &option)
{
    const std::string value = CommandTree::valueName(option);
    return joined(CommandTree::namesOf(option)) + (value.empty() ? "" : " " + value);
}

/// The names of the options that cannot be given with this one.
std::vector<std::string> rivalsOf(const CLI::Option &option)
{
    std::vector<std::string> names;
    for (const CLI::Option *other : option.get_excludes())
        names.push_back(other->get_name());
    std::sort(names.begin(), names.end()); // they come in the order of their addresses
    return names;
}

/// The description, with what it does not say itself about the values.
std::string rightSide(const CLI::Option &option)
{
    std::string text = option.get_description();
    const std::vector<std::string> values = CommandTree::valuesOf(option);
    const bool isComplete = std::ranges::all_of(
        values, [&](const std::string &value) { return text.find(value) != std::string::npos; });
    if (!isComplete)
        text += "; one of " + joined(values);
    if (const auto range = CommandTree::rangeOf(option))
        text += "; from " + range->first + " to " + range->second;
    if (option.get_required())
        text += "; required";
    if (const std::vector<std::string> rivals = rivalsOf(option); !rivals.empty())
        text += "; not with " + joined(rivals);
    return text;
}

/// "LABEL", "MANIFEST..."
std::string placeName(const CLI::Option &place)
{
    const bool isList = place.get_expected_max() >= CLI::detail::expected_max_vector_size;
    return place.get_name(true, false) + (isList ? "..." : "");
}

/// "Usage: vxlabel render LABEL -o FILE [OPTIONS]"
std::string usage(const CLI::App &command, const std::string &name)
{
    std::string text = name;
    for (const CLI::Option *place : CommandTree::placesOf(command))
        text += ' ' + (place->get_required() ? placeName(*place) : '[' + placeName(*place) + ']');
    for (const CLI::Option *option : CommandTree::optionsOf(command)) {
        if (option->get_required())
            text += ' ' + CommandTree::namesOf(*option).front() + ' ' + CommandTree::valueName(*option);
    }
    text += " [OPTIONS]";
    return "Usage: " + text + (CommandTree::commandsOf(command).empty() ? "\n" : " COMMAND\n");
}

std::string places(const CLI::App &command)
{
    std::string text;
    for (const CLI::Option *place : CommandTree::placesOf(command))
        text += entry(placeName(*place), place->get_description());
    return text.empty() ? text : "\nArguments:\n" + text;
}

/// One group of options.
std::string optionsBelow(const CLI::App &command, const std::string &group, const std::string &heading)
{
    std::string text;
    for (const CLI::Option *option : CommandTree::optionsOf(command)) {
        if (option->get_group() == group)
            text += entry(leftSide(*option), rightSide(*option));
    }
    return text.empty() ? text : '\n' + heading + ":\n" + text;
}

/// The groups of options, and those that have none as the last of them.
std::string options(const CLI::App &command)
{
    std::string text;
    for (const std::string &group : command.get_groups()) {
        if (group != ungrouped)
            text += optionsBelow(command, group, group);
    }
    return text + optionsBelow(command, ungrouped, ungrouped);
}

/// The same below headings that help2man does not take for those of its own sections.
std::string manualOptions(const CLI::App &command, const std::string &name)
{
    std::string text;
    for (const std::string &group : command.get_groups()) {
        if (group != ungrouped)
            text += optionsBelow(command, group, "Options for " + CLI::detail::to_lower(group));
    }
    return text + optionsBelow(command, ungrouped, "Options of " + name);
}

std::string commands(const CLI::App &program)
{
    std::string text;
    for (const CLI::App *command : CommandTree::commandsOf(program))
        text += entry(command->get_name(), command->get_description());
    return text.empty() ? text : "\nCommands:\n" + text;
}

/// Those that the program has for all of its commands.
std::string sharedOptions(const CLI::App &command)
{
    const CLI::App *program = command.get_parent();
    std::string text;
    for (const CLI::Option *option : CommandTree::optionsOf(*program)) {
        const bool isQuestion = option == program->get_help_ptr() || option == program->get_help_all_ptr()
            || option == program->get_version_ptr();
        if (!isQuestion)
            text += entry(leftSide(*option), rightSide(*option));
    }
    return text.empty() ? text : "\nOptions of all commands:\n" + text;
}

/// The footer, with a mark in front of each example. Its lists of names and texts are wrapped; examples are
/// not, as they would break when they are copied.
std::string footer(const CLI::App &command, const std::string &mark = {})
{
    static const std::regex listed("(  \\S.*? {2,})(\\S.*)");
    std::string text;
    std::istringstream lines(command.get_footer());
    for (std::string line; std::getline(lines, line);) {
        std::smatch parts;
        if (std::regex_match(line, parts, listed)) {
            text += '\n' + parts[1].str();
            appendWords(text, parts[2], size_t(parts[1].length()));
        } else {
            text += '\n' + (line.starts_with("  ") ? "  " + mark + line.substr(2) : line);
        }
    }
    return text + '\n';
}

std::string help(const CLI::App &command, const std::string &name)
{
    std::string text;
    appendWords(text, command.get_description(), 0);
    text += '\n' + usage(command, name) + places(command) + options(command) + commands(command);
    if (command.get_parent())
        text += sharedOptions(command);
    return text + footer(command);
}

/// The footer in the manual, with headings of this form.
std::string manualFooter(const CLI::App &command, const std::string &heading)
{
    return std::regex_replace(footer(command, "$ "), std::regex("\n(\\w[^\n]*):(?=\n)"), heading);
}

std::string manualSection(const CLI::App &command, const std::string &name)
{
    std::string text = "\n*" + name + "*\n\n";
    appendWords(text, command.get_description(), 0);
    return text + "\n\n" + usage(command, name) + places(command) + manualOptions(command, name)
        + manualFooter(command, "\n$1 of " + name + ":\n");
}

std::string manual(const CLI::App &program, const std::string &name)
{
    std::string text;
    appendWords(text, program.get_description(), 0);
    text += '\n' + usage(program, name) + commands(program) + options(program);
    for (const CLI::App *command : CommandTree::commandsOf(program))
        text += manualSection(*command, name + ' ' + command->get_name());
    return text + manualFooter(program, "\n*$1*\n");
}

} // namespace

std::string HelpFormatter::make_help(const CLI::App *command, std::string name, CLI::AppFormatMode mode) const
{
    const bool isManual = mode == CLI::AppFormatMode::All && !command->get_parent();
    return isManual ? manual(*command, name) : help(*command, name);
}
