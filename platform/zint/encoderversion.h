// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

namespace Zint {

/// The version of libzint that runs, which may be another than the one that was built with: "2.11.1".
[[nodiscard]] QString encoderVersion();

} // namespace Zint
