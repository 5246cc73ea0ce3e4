// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class CommandLine;

/// `vxlabel convert`: a label in the other file format, without loss.
void addConvertCommand(CommandLine &commandLine);
