// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

/// What the help, the shell's completion and advice need to know about the commands and their options. All of
/// it is read from the parser, so that an option which is added to a command is known everywhere.
namespace CommandTree {

/// "vxlabel separate"
[[nodiscard]] QString fullName(const CLI::App &command);
/// The commands that are no secret, in the order in which they were added.
[[nodiscard]] std::vector<const CLI::App *> commandsOf(const CLI::App &program);
/// The options of a command itself that are no secret, without its arguments.
[[nodiscard]] std::vector<const CLI::Option *> optionsOf(const CLI::App &command);
/// The arguments of a command that have a place instead of a name.
[[nodiscard]] std::vector<const CLI::Option *> placesOf(const CLI::App &command);

/// "-o", "--output"
[[nodiscard]] std::vector<std::string> namesOf(const CLI::Option &option);
[[nodiscard]] bool takesValue(const CLI::Option &option);
/// What stands for the value of an option in the help: "FILE"; empty for a flag.
[[nodiscard]] std::string valueName(const CLI::Option &option);
/// All values that an option takes, if it takes only some: "diffusion", "ordered", "threshold".
[[nodiscard]] std::vector<std::string> valuesOf(const CLI::Option &option);
/// The least and the greatest number that an option takes, if it is one of a range.
[[nodiscard]] std::optional<std::pair<std::string, std::string>> rangeOf(const CLI::Option &option);

/// The words that can stand after a command, or instead of one that was mistyped: the names of its options,
/// of those of the program and of the commands.
[[nodiscard]] QStringList knownWords(const CLI::App &command);

} // namespace CommandTree
