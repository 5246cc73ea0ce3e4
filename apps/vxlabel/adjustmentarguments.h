// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/adjust/printadjustment.h"

namespace CLI {
class App;
}

/// Adds the arguments that change a label between its design and its print.
void addAdjustmentArguments(CLI::App &command, PrintAdjustment &adjustment);
