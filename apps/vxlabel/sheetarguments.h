// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/sheet/sheetoptions.h"

#include <optional>

namespace CLI {
class App;
}

/// Adds the arguments that describe sheets, of which each asks for them.
void addSheetArguments(CLI::App &command, std::optional<SheetOptions> &sheet);
