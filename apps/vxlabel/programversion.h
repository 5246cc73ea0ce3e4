// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <string>

/// The versions of the program, and of Qt and libzint as they run, the authors and the licence.
[[nodiscard]] std::string programVersion();
