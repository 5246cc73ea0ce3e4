// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/commandtree.h"

#include <CLI/CLI.hpp>

using namespace Qt::StringLiterals;

namespace {

/// What a validator says about itself between two marks: the parser keeps no other record of what it takes.
std::optional<std::string> described(const CLI::Option &option, const std::string &begin, char end)
{
    const std::string text = option.get_type_name();
    const size_t found = text.find(begin);
    const size_t first = found + begin.size();
    const size_t last = found == std::string::npos ? found : text.find(end, first);
    return last == std::string::npos ? std::nullopt : std::optional(text.substr(first, last - first));
}

} // namespace

QString CommandTree::fullName(const CLI::App &command)
{
    const CLI::App *program = command.get_parent();
    const QString name = QString::fromStdString(command.get_name());
    return program ? fullName(*program) + u' ' + name : name;
}

std::vector<const CLI::App *> CommandTree::commandsOf(const CLI::App &program)
{
    return program.get_subcommands([](const CLI::App *command) { return !command->get_group().empty(); });
}

std::vector<const CLI::Option *> CommandTree::optionsOf(const CLI::App &command)
{
    return command.get_options(
        [](const CLI::Option *option) { return option->nonpositional() && !option->get_group().empty(); });
}

std::vector<const CLI::Option *> CommandTree::placesOf(const CLI::App &command)
{
    return command.get_options([](const CLI::Option *option) { return option->get_positional(); });
}

std::vector<std::string> CommandTree::namesOf(const CLI::Option &option)
{
    std::vector<std::string> names;
    for (const std::string &name : option.get_snames())
        names.push_back("-" + name);
    for (const std::string &name : option.get_lnames())
        names.push_back("--" + name);
    return names;
}

bool CommandTree::takesValue(const CLI::Option &option)
{
    return option.get_items_expected_max() > 0;
}

std::string CommandTree::valueName(const CLI::Option &option)
{
    const std::string text = takesValue(option) ? option.get_type_name() : std::string();
    return text.substr(0, text.find(':'));
}

std::vector<std::string> CommandTree::valuesOf(const CLI::Option &option)
{
    const std::optional<std::string> list = described(option, ":{", '}');
    return list ? CLI::detail::split(*list, ',') : std::vector<std::string>();
}

std::optional<std::pair<std::string, std::string>> CommandTree::rangeOf(const CLI::Option &option)
{
    const std::optional<std::string> ends = described(option, " in [", ']');
    const size_t dash = ends ? ends->find(" - ") : std::string::npos;
    if (dash == std::string::npos)
        return {};
    return std::pair(ends->substr(0, dash), ends->substr(dash + 3));
}

QStringList CommandTree::knownWords(const CLI::App &command)
{
    QStringList words;
    for (const CLI::App *subcommand : commandsOf(command))
        words.append(QString::fromStdString(subcommand->get_name()));
    for (const CLI::App *level = &command; level; level = level->get_parent()) {
        for (const CLI::Option *option : optionsOf(*level)) {
            for (const std::string &name : option->get_lnames())
                words.append(u"--"_s + QString::fromStdString(name));
        }
    }
    return words;
}
