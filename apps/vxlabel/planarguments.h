// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/batchoptions.h"

#include <optional>
#include <string>

namespace CLI {
class App;
class Option;
} // namespace CLI

// What a batch makes of rows before it prints them: keys, copies and names of files.

/// Adds "--key" and "--copies-field".
void addPlanArguments(CLI::App &command, BatchOptions &batch);
/// Adds "--format".
CLI::Option *addFormat(CLI::App &command, std::optional<BatchOptions::Format> &format);
/// Adds "--output", whose names are in the encoding of file systems; what tells whose names they are.
CLI::Option *addPattern(CLI::App &command, const std::string &what, std::string &pattern);
