// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class CommandLine;

/// Adds "vxlabel completion".
void addCompletionCommand(CommandLine &commandLine);
