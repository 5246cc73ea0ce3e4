// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class CommandLine;

/// Adds "vxlabel check".
void addCheckCommand(CommandLine &commandLine);
