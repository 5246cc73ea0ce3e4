// SPDX-License-Identifier: BSD-3-Clause
// Compiled among the library's own sources, so that it finds the headers that they find.
#include "platform/logging/cutemessagelogger.h"
#include "platform/zint/barcodeencoder.h"

#include <type_traits>

static_assert(std::is_same_v<decltype(loggerInstance()), HostLog &>, "the library sees the host's logger");
static_assert(Zint::QZint::IsOfTheHost, "the library sees the host's barcode");
