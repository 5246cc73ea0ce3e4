// SPDX-License-Identifier: BSD-3-Clause
// Compiled among the library's own sources, so that it finds the header that they find.
#include "platform/logging/cutemessagelogger.h"

#include <type_traits>

static_assert(std::is_same_v<decltype(loggerInstance()), HostLog &>, "the library sees the host's logger");
