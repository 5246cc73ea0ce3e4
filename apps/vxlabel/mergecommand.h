// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class CommandLine;

/// Adds "vxlabel merge".
void addMergeCommand(CommandLine &commandLine);
