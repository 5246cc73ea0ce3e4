// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class CommandLine;

/// Adds "vxlabel batch".
void addBatchCommand(CommandLine &commandLine);
