// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class CommandLine;

/// `vxlabel separate`: one plate for each ink of a label, the proof, and a report of the ink that they take.
void addSeparateCommand(CommandLine &commandLine);
