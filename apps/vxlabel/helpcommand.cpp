// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/helpcommand.h"

#include "apps/vxlabel/commandline.h"
#include "apps/vxlabel/commandtree.h"

#include <CLI/CLI.hpp>

#include <memory>

void addHelpCommand(CommandLine &commandLine)
{
    const auto name = std::make_shared<std::string>();
    CLI::App &help = commandLine.addQuestion("help", "Print help on the program or a command",
        "vxlabel help\nvxlabel help batch", [name](const CLI::App &program) {
            const CLI::App *subject = name->empty() ? &program : program.get_subcommand(*name);
            return QByteArray::fromStdString(program.get_formatter()->make_help(
                subject, CommandTree::fullName(*subject).toStdString(), CLI::AppFormatMode::Normal));
        });
    std::vector<std::string> names;
    for (const CLI::App *command : CommandTree::commandsOf(*help.get_parent()))
        names.push_back(command->get_name());
    help.add_option("COMMAND", *name, "The command; the program if not given")->check(CLI::IsMember(names));
}
