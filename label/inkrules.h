// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/labeldocument.h"

/// What inks and paper have to be so that every plate has a name and every colour one plate.
namespace InkRules {

[[nodiscard]] Problems problems(const QList<Ink> &inks, const QColor &paper);

} // namespace InkRules
