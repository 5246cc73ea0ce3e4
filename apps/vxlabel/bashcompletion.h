// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

namespace CLI {
class App;
}

/// The script by which bash completes the arguments of the program: commands, options, the values of options
/// that take only some, and the names of files and folders. It needs nothing but bash.
[[nodiscard]] QByteArray bashCompletion(const CLI::App &program);
