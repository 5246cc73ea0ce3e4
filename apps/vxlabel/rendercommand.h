// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class CommandLine;

/// `vxlabel render`: the proof of a label, made of exactly the dots of its plates, as a PNG image.
void addRenderCommand(CommandLine &commandLine);
