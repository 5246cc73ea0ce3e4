// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/completioncommand.h"

#include "apps/vxlabel/bashcompletion.h"
#include "apps/vxlabel/commandline.h"

#include <CLI/CLI.hpp>

#include <memory>

void addCompletionCommand(CommandLine &commandLine)
{
    const auto shell = std::make_shared<std::string>();
    CLI::App &command = commandLine.addQuestion("completion",
        "Print the commands with which a shell completes the arguments of vxlabel",
        "source <(vxlabel completion bash)\nvxlabel completion bash > vxlabel.bash",
        [shell](const CLI::App &program) { return bashCompletion(program); });
    command.add_option("SHELL", *shell, "The shell: bash")->required()->check(CLI::IsMember({ "bash" }));
}
