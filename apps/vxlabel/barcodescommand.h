// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class CommandLine;

/// `vxlabel barcodes`: the symbologies and what each can hold, as a table for people or as JSON.
void addBarcodesCommand(CommandLine &commandLine);
