// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class CommandLine;

/// `vxlabel inspect`: what a label holds, as a table for people or as JSON.
void addInspectCommand(CommandLine &commandLine);
