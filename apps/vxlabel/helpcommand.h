// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class CommandLine;

/// Adds "vxlabel help", which answers like "vxlabel --help" and "vxlabel COMMAND --help". To be added behind
/// all other commands, whose names it takes.
void addHelpCommand(CommandLine &commandLine);
